// The way of a mesh from the evaluated host object to the finished body of the mesh file, whole and by stage,
// for a skinned model of 60,000 triangles; items are triangles.
#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "geometry/vertex_layout.h"
#include "io/streams/stream_memory.h"
#include "material/run_materials.h"
#include "mesh/build/bone_palettes.h"
#include "mesh/build/mesh_assembly.h"
#include "mesh/build/weld.h"
#include "mesh/file/mesh_body_writer.h"
#include "mesh/read/extract_mesh.h"
#include "mesh/strips/renumber.h"
#include "mesh/strips/sub_mesh.h"
#include "mesh/write_mesh.h"
#include "run/export.h"
#include "scene/bones/bone_tree.h"
#include "scene/current_model.h"
#include "scene/scene_as_read.h"
#include "standalone/standalone_host.h"

namespace {

using namespace standalone;

constexpr int kColumns = 250;
constexpr int kRows = 120;
constexpr int kBones = 20;

// A bent tube, as an arm or a tail is: closed around, one map channel, one smoothing group.
host::Mesh TubeMesh() {
    host::Mesh mesh;
    host::MapChannel map{1, {}, {}};
    for (int row = 0; row <= kRows; ++row) {
        for (int column = 0; column <= kColumns; ++column) {
            const float u = static_cast<float>(column) / kColumns;
            const float v = static_cast<float>(row) / kRows;
            const float around = 2 * std::numbers::pi_v<float> * u;
            const float radius = 0.4F + 0.1F * std::sin(9 * v);
            mesh.verts.push_back({radius * std::cos(around), radius * std::sin(around) + v * v, 10 * v});
            map.verts.push_back({u, v, 0});
        }
    }
    constexpr std::uint32_t kWidth = kColumns + 1;
    for (std::uint32_t row = 0; row < kRows; ++row) {
        for (std::uint32_t column = 0; column < kColumns; ++column) {
            const std::uint32_t corner = row * kWidth + column;
            for (const auto& face : {host::Face{{corner, corner + 1, corner + kWidth + 1}, 1, 0},
                                     host::Face{{corner, corner + kWidth + 1, corner + kWidth}, 1, 0}}) {
                mesh.faces.push_back(face);
                map.faces.push_back({{face.v[0], face.v[1], face.v[2]}});
            }
        }
    }
    mesh.maps.push_back(std::move(map));
    return mesh;
}

// Each vertex follows the three bones of a chain that are nearest to it.
eSkinModifier TubeSkin(const host::Mesh& mesh) {
    eSkinModifier skin;
    for (int bone = 0; bone < kBones; ++bone) {
        skin.bones.push_back(bone + 1);
    }
    skin.firstWeight.push_back(0);
    for (const host::Point3& vertex : mesh.verts) {
        const float along = vertex.z / 10 * (kBones - 1);
        const int nearest = static_cast<int>(std::lround(along));
        for (int bone = std::max(nearest - 1, 0); bone <= std::min(nearest + 1, kBones - 1); ++bone) {
            skin.weights.push_back({bone, 2 - std::fabs(along - static_cast<float>(bone))});
        }
        skin.firstWeight.push_back(static_cast<std::uint32_t>(skin.weights.size()));
    }
    return skin;
}

eSceneData TubeScene() {
    eSceneData scene;
    eStandardMaterial material;
    material.maps[1].map = 0;
    scene.maps.push_back({"skin", {}, eCheckerMap{}});
    scene.materials.push_back({"skin", "skin", material});
    eMeshObject tube{TubeMesh(), {}};
    const eSkinModifier skin = TubeSkin(tube.mesh);
    scene.objects.push_back({"", std::move(tube), {skin}});
    scene.objects.push_back({"", eHelperObject{}, {}});
    eNodeData node{.name = "tube", .properties = "Model=units/tube\r\nPoly", .object = 0, .material = 0};
    for (int bone = 0; bone < kBones; ++bone) {
        node.children.push_back(bone + 1);
    }
    scene.nodes.push_back(node);
    for (int bone = 0; bone < kBones; ++bone) {
        scene.nodes.push_back({.name = "bone_" + std::to_string(bone), .object = 1, .parent = 0});
    }
    scene.roots = {0};
    return scene;
}

// A run that stands before the mesh of its one model.
class eTubeRun {
public:
    eTubeRun() : host(TubeScene()) {
        run.host = &host;
        run.model->currentRoot = &Node();
        run.scene->models.resize(1);
        CollectBones(run, Node(), run.model->boneCount, false);
        Begin();
    }
    ~eTubeRun() { ForgetBoneNumbers(run); }

    host::INode& Node() { return *host.GetRootNode()->GetChildNode(0); }
    eExportBone& Bone() { return run.model->bones.front(); }

    void Begin() {
        run.materials->materialMap.clear();
        run.model->bones.clear();
        run.model->bones.resize(static_cast<std::size_t>(run.model->boneCount));
        Bone().mesh.frames.resize(1);
        Bone().node = &Node();
        Bone().hasMesh = 1;
    }
    void Extract() { ExtractMesh(run, Node(), 0, nullptr); }
    std::size_t Triangles() { return Bone().mesh.faces.size(); }

    StandaloneHost host;
    Export run;
};

void CountTriangles(benchmark::State& state, std::size_t triangles) {
    state.SetItemsProcessed(static_cast<std::int64_t>(triangles) * state.iterations());
}

void WholePath(benchmark::State& state) {
    eTubeRun tube;
    for (auto _ : state) {
        tube.Begin();
        tube.Extract();
        xIo::eMemoryStream stream(256);
        benchmark::DoNotOptimize(WriteMesh(tube.run, stream, 0));
    }
    CountTriangles(state, tube.Triangles());
}
BENCHMARK(WholePath)->Unit(benchmark::kMillisecond);

void Extraction(benchmark::State& state) {
    eTubeRun tube;
    for (auto _ : state) {
        tube.Begin();
        tube.Extract();
    }
    CountTriangles(state, tube.Triangles());
}
BENCHMARK(Extraction)->Unit(benchmark::kMillisecond);

void Palettes(benchmark::State& state) {
    eTubeRun tube;
    tube.Extract();
    for (auto _ : state) {
        tube.Bone().palettes.clear();
        BuildBonePalettes(tube.Bone());
    }
    CountTriangles(state, tube.Triangles());
}
BENCHMARK(Palettes)->Unit(benchmark::kMillisecond);

void Assembly(benchmark::State& state) {
    eTubeRun tube;
    tube.Extract();
    BuildBonePalettes(tube.Bone());
    for (auto _ : state) {
        benchmark::DoNotOptimize(AssembleMesh(tube.run, 0, false, true));
    }
    CountTriangles(state, tube.Triangles());
}
BENCHMARK(Assembly)->Unit(benchmark::kMillisecond);

void SubMeshes(benchmark::State& state) {
    eTubeRun tube;
    tube.Extract();
    BuildBonePalettes(tube.Bone());
    const eMeshAssembly assembly = AssembleMesh(tube.run, 0, false, true);
    for (auto _ : state) {
        benchmark::DoNotOptimize(BuildSubMeshes(tube.run, tube.Bone(), assembly, true));
    }
    CountTriangles(state, tube.Triangles());
}
BENCHMARK(SubMeshes)->Unit(benchmark::kMillisecond);

void RenumberAndWrite(benchmark::State& state) {
    eTubeRun tube;
    tube.Extract();
    BuildBonePalettes(tube.Bone());
    const eMeshAssembly assembly = AssembleMesh(tube.run, 0, false, true);
    eSubMeshes subMeshes = BuildSubMeshes(tube.run, tube.Bone(), assembly, true);
    for (auto _ : state) {
        const eFinalMesh mesh = RenumberVertices(subMeshes, assembly.vertices.size());
        xIo::eMemoryStream stream(256);
        WriteMeshBody(tube.run, stream,
                      {.bounds = {},
                       .skinned = true,
                       .format = assembly.format,
                       .absent = VF_COLOR,
                       .bone = tube.Bone(),
                       .subMeshes = subMeshes,
                       .welded = assembly.vertices,
                       .mesh = mesh});
        benchmark::DoNotOptimize(stream.Size());
    }
    CountTriangles(state, tube.Triangles());
}
BENCHMARK(RenumberAndWrite)->Unit(benchmark::kMillisecond);

// The corners as the assembly hands them to the weld.
std::vector<eExportVertex> TubeCorners() {
    const host::Mesh mesh = TubeMesh();
    std::vector<eExportVertex> corners;
    for (const host::Face& face : mesh.faces) {
        for (const std::uint32_t v : face.v) {
            eExportVertex corner;
            corner.position = mesh.verts[v];
            corner.uv0 = {mesh.maps[0].verts[v].x, mesh.maps[0].verts[v].y};
            corner.normal = host::Normalize({corner.position.x, corner.position.y, 0});
            corner.format = MakeVertexFormat(true, true, 1, 3, false);
            corners.push_back(corner);
        }
    }
    return corners;
}

void Weld(benchmark::State& state) {
    const std::vector<eExportVertex> corners = TubeCorners();
    for (auto _ : state) {
        eVertexWeld weld(corners.size(), corners.size());
        for (const eExportVertex& corner : corners) {
            benchmark::DoNotOptimize(weld.FindOrAdd(corner));
        }
    }
    CountTriangles(state, corners.size() / 3);
}
BENCHMARK(Weld)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
