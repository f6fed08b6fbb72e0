// A picture of 2048 by 2048 rebuilt for the engine, as a whole and by its steps: decoding the source,
// evaluating its map once per pixel, converting the pixels to the file's bytes, and writing them. What must
// hold: a rebuild takes below 0.6 seconds of processor time.
//
// Argument 0 is a colour picture, 1 one with alpha, 2 heights and 3 normals in the bump slot; 4 a colour
// picture as jpg.
#include <benchmark/benchmark.h>

#include <array>
#include <filesystem>
#include <string>

#include "io/streams/whole_file.h"
#include "material/textures/bmp_file.h"
#include "material/textures/normal_map.h"
#include "material/textures/texture_source.h"
#include "material/textures/write_texture.h"
#include "normal_maps.h"
#include "run/export.h"
#include "standalone/pictures/image.h"
#include "standalone/standalone_host.h"
#include "support/pictures.h"
#include "support/scene_builder.h"
#include "support/temp_folder.h"
#include "texture/compress_image.h"

namespace {

using namespace standalone;

constexpr int kSide = 2048;

enum eKind { kColor, kColorAndAlpha, kHeights, kNormals, kColorAsJpg };

// Ground with five octaves of noise: in colours of normals for every kind.
std::string PictureFile(int kind) {
    static const ePixelImage ground = MakeNormalMaps(kSide)[1].image;
    support::ePicture picture{kSide, kSide, kind == kColorAndAlpha ? 4 : 3, {}};
    for (std::size_t i = 0; i < ground.rgba.size(); i += 4) {
        const std::array<std::uint8_t, 4> texel = {ground.rgba[i + 3], ground.rgba[i + 1], ground.rgba[i + 2],
                                                   ground.rgba[i + 1]};
        picture.values.insert(picture.values.end(), texel.begin(), texel.begin() + picture.channels);
    }
    return kind == kColorAsJpg ? support::Jpg(picture) : support::Png(picture);
}

// One picture in one material, asked as the material pass asks.
class eRebuild {
public:
    explicit eRebuild(int kind)
        : file(PictureFile(kind)), name(kind == kColorAsJpg ? "picture.jpg" : "picture.png") {
        folder.Write(name, file);
        support::eSceneBuilder scene;
        const int bitmap = scene.Map(eBitmapMap{.file = folder / name});
        eStandardMaterial material;
        slot = kind == kHeights || kind == kNormals ? host::kBumpMap : host::kDiffuseMap;
        material.maps[static_cast<std::size_t>(slot)].map =
            kind == kNormals ? scene.Map(eNormalBumpMap{.normal = bitmap}) : bitmap;
        scene.Node("n").Material(scene.Material("m", material));
        data = scene.Build();
        Open();
    }
    // A new host, which has not seen the picture yet.
    void Open() {
        host.emplace(data);
        run.host = &*host;
    }
    host::Mtl& Material() { return *host->GetINodeByName("n")->GetMtl(); }
    eTextureSource Source() {
        host::Texmap* const map = Material().GetSubTexmap(slot);
        const eSlotUse use = slot == host::kBumpMap ? eSlotUse::Bump : eSlotUse::Color;
        const eTextureRole role = RoleOf(&Material(), {map, use});
        return {&Material(), role.isNormal ? map->GetSubTexmap(0) : map, role, kSide, kSide};
    }
    void Write() {
        eExportTexture texture;
        texture.texmap = Material().GetSubTexmap(slot);
        texture.role = Source().role;
        texture.targetPath = eName(folder / "target");
        WriteTexture(run, texture, &Material(), 0, 0, 0);
    }
    void RemoveTarget() const {
        for (const char* extension : {".bmp", ".dds"}) {
            std::filesystem::remove(folder / (std::string("target") + extension));
        }
    }

    support::eTempFolder folder;
    std::string file;
    std::string name;
    int slot = 0;
    eSceneData data;
    std::optional<StandaloneHost> host;
    Export run;
};

std::vector<std::uint8_t> Converted(const eTextureRows& picture, const eTextureRole& role) {
    if (!role.isBump) {
        return MakeBmp(picture, 24);
    }
    const eTextureImage normals = role.isNormal ? NormalsFromPicture(picture) : NormalsFromHeights(picture);
    std::vector<std::uint8_t> content;
    CompressionOptions options;
    options.g_texture_format = 3;
    CompressImage(normals.pixels.data(), kSide, kSide, kSide * 4, pixelLayoutBgra, options,
                  [&](const void* buffer, std::size_t byteCount, const eMipInfo*, std::intptr_t) {
                      const auto* bytes = static_cast<const std::uint8_t*>(buffer);
                      content.insert(content.end(), bytes, bytes + byteCount);
                      return 0;
                  });
    return content;
}

void WholeRebuild(benchmark::State& state) {
    eRebuild rebuild(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        rebuild.Open();
        rebuild.RemoveTarget();
        state.ResumeTiming();
        rebuild.Write();
    }
    if (!rebuild.folder.Has("target.bmp") && !rebuild.folder.Has("target.dds")) {
        state.SkipWithError("nothing was written");
    }
}
BENCHMARK(WholeRebuild)->DenseRange(kColor, kColorAsJpg)->Unit(benchmark::kMillisecond);

void StepDecode(benchmark::State& state) {
    const eRebuild rebuild(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            DecodeImage({reinterpret_cast<const std::uint8_t*>(rebuild.file.data()), rebuild.file.size()})
                .image);
    }
}
BENCHMARK(StepDecode)->DenseRange(kColor, kColorAsJpg)->Unit(benchmark::kMillisecond);

eTextureImage Evaluated(eRebuild& rebuild) {
    const eTextureRows rows = TextureRows(rebuild.run, rebuild.Source(), 0);
    eTextureImage image(rows.width, rows.height);
    for (int y = 0; y < rows.height; ++y) {
        rows.fill(y, {image.Pixel(0, y), rows.RowBytes()});
    }
    return image;
}

void StepEvaluate(benchmark::State& state) {
    eRebuild rebuild(static_cast<int>(state.range(0)));
    Evaluated(rebuild);  // decodes the picture
    for (auto _ : state) {
        benchmark::DoNotOptimize(Evaluated(rebuild).pixels.data());
    }
}
BENCHMARK(StepEvaluate)->DenseRange(kColor, kNormals)->Unit(benchmark::kMillisecond);

void StepConvert(benchmark::State& state) {
    eRebuild rebuild(static_cast<int>(state.range(0)));
    const eTextureImage image = Evaluated(rebuild);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Converted(image, rebuild.Source().role).data());
    }
}
BENCHMARK(StepConvert)->DenseRange(kColor, kNormals)->Unit(benchmark::kMillisecond);

void StepWrite(benchmark::State& state) {
    eRebuild rebuild(static_cast<int>(state.range(0)));
    const auto content = Converted(Evaluated(rebuild), rebuild.Source().role);
    for (auto _ : state) {
        xIo::WriteWholeFile(rebuild.folder / "target", content);
    }
}
BENCHMARK(StepWrite)->Arg(kColor)->Arg(kNormals)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
