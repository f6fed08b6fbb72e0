// What the stand-alone host's answers cost: matrices along chains of bones, texels, evaluated meshes,
// properties.

#include <benchmark/benchmark.h>

#include <memory>

#include "material/queries/shade_context.h"
#include "standalone/standalone_host.h"
#include "support/pictures.h"
#include "support/scene_builder.h"
#include "support/temp_folder.h"

namespace {

using namespace standalone;

constexpr int kTicks = 160;

// Chains of that depth, every bone moving in every frame.
std::unique_ptr<StandaloneHost> Chains(int bones, int depth, int frames) {
    support::eSceneBuilder builder;
    builder.Settings().lastFrame = frames;
    const eRotation quarter = support::RotationAbout({0, 0, 1}, 90);
    for (int made = 0; made < bones;) {
        support::eNode node = builder.Node("root" + std::to_string(made++));
        for (int level = 1;; ++level) {
            for (int key = 0; key <= frames; key += 10) {
                node.Key({.frame = static_cast<double>(key),
                          .position = host::Point3{1, 0, static_cast<float>(key)},
                          .rotation = key % 20 == 0 ? eRotation{} : quarter});
            }
            if (level == depth || made == bones) {
                break;
            }
            node = node.Child("bone" + std::to_string(made++));
        }
    }
    return std::make_unique<StandaloneHost>(builder.Build());
}

void SampleSubtree(host::INode& node, int frames, benchmark::State& state) {
    host::INode& parent = *node.GetParentNode();
    for (int frame = 0; frame <= frames; ++frame) {
        benchmark::DoNotOptimize(node.GetNodeTM(frame * kTicks));
        benchmark::DoNotOptimize(parent.GetNodeTM(frame * kTicks));
    }
    for (int i = 0; i < node.NumberOfChildren(); ++i) {
        SampleSubtree(*node.GetChildNode(i), frames, state);
    }
}

// Node by node through all frames, node and parent asked for, as animations are sampled.
void SampledBoneFrame(benchmark::State& state) {
    constexpr int kFrames = 10000;
    const int bones = static_cast<int>(state.range(0)), depth = static_cast<int>(state.range(1));
    for (auto _ : state) {
        state.PauseTiming();
        auto host = Chains(bones, depth, kFrames);
        state.ResumeTiming();
        host::INode& root = *host->GetRootNode();
        for (int i = 0; i < root.NumberOfChildren(); ++i) {
            SampleSubtree(*root.GetChildNode(i), kFrames, state);
        }
        state.PauseTiming();
        host.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * bones * (kFrames + 1));
}
BENCHMARK(SampledBoneFrame)
    ->Args({50, 5})
    ->Args({200, 5})
    ->Args({50, 50})
    ->Args({100, 100})
    ->Args({200, 100})
    ->Args({200, 200})
    ->Unit(benchmark::kMillisecond);

// Every texel of a picture of 2048 by 2048, nearest or filtered.
void EvaluatedTexel(benchmark::State& state) {
    constexpr int kSize = 2048;
    const support::eTempFolder folder;
    support::ePicture picture{kSize, kSize, 3, std::vector<std::uint8_t>(std::size_t{kSize} * kSize * 3, 77)};
    folder.Write("picture.bmp", support::Bmp(picture));
    support::eSceneBuilder builder;
    eStandardMaterial material;
    material.maps[host::kDiffuseMap].map =
        builder.Map(eBitmapMap{.file = folder / "picture.bmp"}, {.tiling = {2, 2}});
    builder.Node("n").Material(builder.Material("m", material));
    StandaloneHost host(builder.Build());
    host::Texmap& map = *host.GetINodeByName("n")->GetMtl()->GetSubTexmap(host::kDiffuseMap);
    const eSceneLights lights;
    SContext context(lights);
    context.filterMaps = state.range(0) != 0;
    for (auto _ : state) {
        for (int y = 1; y <= kSize; ++y) {
            for (int x = 1; x <= kSize; ++x) {
                context.uv = {static_cast<float>(x) / (kSize + 1), static_cast<float>(y) / (kSize + 1)};
                benchmark::DoNotOptimize(map.EvalColor(context));
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * kSize * kSize);
}
BENCHMARK(EvaluatedTexel)->ArgName("filtered")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void DecodedPicture(benchmark::State& state) {
    constexpr int kSize = 2048;
    support::ePicture picture{kSize, kSize, 3, {}};
    unsigned value = 1;
    for (int i = 0; i < kSize * kSize * 3; ++i) {
        value = value * 1664525U + 1013904223U;
        picture.values.push_back(static_cast<std::uint8_t>((i / 64 & 127) + (value >> 28)));
    }
    const std::string file = state.range(0) != 0 ? support::Jpg(picture) : support::Png(picture);
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            DecodeImage({reinterpret_cast<const std::uint8_t*>(file.data()), file.size()}).image);
    }
}
BENCHMARK(DecodedPicture)->ArgName("jpg")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// A grid of 60,000 triangles as the exporter asks for it; with a skin each time at another moment.
void EvaluatedMesh(benchmark::State& state) {
    support::eSceneBuilder builder;
    support::eNode bone = builder.Node("bone");
    bone.Key({.frame = 0, .position = host::Point3{0, 0, 0}});
    bone.Key({.frame = 100, .position = host::Point3{0, 0, 10}});
    host::Mesh grid = support::GridMesh(200, 150);
    support::eNode node = builder.Node("mesh");
    const std::size_t vertexCount = grid.verts.size();
    node.Object(eMeshObject{std::move(grid)});
    if (state.range(0) != 0) {
        node.Skin({bone},
                  std::vector<std::vector<eSkinWeight>>(vertexCount, {{0, 0.5F}, {0, 0.25F}, {0, 0.25F}}));
    }
    StandaloneHost host(builder.Build());
    host::INode& mesh = *host.GetINodeByName("mesh");
    host::TimeValue time = 0;
    for (auto _ : state) {
        time = (time + kTicks) % (100 * kTicks);
        host::Object* object = mesh.EvalWorldState(time).obj;
        auto* triangles = static_cast<host::TriObject*>(object->ConvertToType(time, host::kTriObjectClass));
        benchmark::DoNotOptimize(triangles->GetMesh().verts.data());
    }
}
BENCHMARK(EvaluatedMesh)->ArgName("skinned")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

// Twenty properties, thirty questions: what the walk asks of one bone, the first reading included.
void AskedProperties(benchmark::State& state) {
    support::eSceneBuilder builder;
    constexpr int kNodes = 5000;
    for (int i = 0; i < kNodes; ++i) {
        support::eNode node = builder.Node("n" + std::to_string(i));
        for (int line = 0; line < 20; ++line) {
            node.Property("property_" + std::to_string(line) + " = value of the line");
        }
    }
    std::string value;
    for (auto _ : state) {
        state.PauseTiming();
        auto host = std::make_unique<StandaloneHost>(builder.Build());
        state.ResumeTiming();
        host::INode& root = *host->GetRootNode();
        for (int i = 0; i < kNodes; ++i) {
            host::INode& node = *root.GetChildNode(i);
            for (int question = 0; question < 30; ++question) {
                benchmark::DoNotOptimize(
                    node.GetUserPropString(question % 3 == 0 ? "Property_9" : "CommonMesh", value));
            }
        }
        state.PauseTiming();
        host.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kNodes);
}
BENCHMARK(AskedProperties)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
