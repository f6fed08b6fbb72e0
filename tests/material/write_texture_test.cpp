// What becomes of a picture, by its slot and kind; what stays, and what is told.
#include "material/textures/write_texture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <string>

#include "base/ansi.h"
#include "material/textures/bmp_file.h"
#include "platform/file_events.h"
#include "support/export_run.h"
#include "support/pictures.h"
#include "support/scene_builder.h"
#include "texture/dds_reader.h"

namespace {

using namespace standalone;
using support::eExportRun;
using support::eNode;
using support::eSceneBuilder;
using support::Patched;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using eBytes = std::vector<std::uint8_t>;

// A model with a mesh of each material.
eNode AddModel(eSceneBuilder& scene, const std::string& path, const std::vector<int>& materials) {
    eNode root = scene.Node(path).Property("Model=" + path).Object(eHelperObject{});
    for (const int material : materials) {
        root.Child("part" + std::to_string(material))
            .Property("Poly")
            .Object(eMeshObject{support::GridMesh(8, 4)})
            .Material(material);
    }
    return root;
}

int AddMaterial(eSceneBuilder& scene, const std::string& name, int slot, int map, float amount = 1) {
    eStandardMaterial material;
    material.maps[host::kDiffuseMap].map = scene.Map(eCheckerMap{});  // brings the coordinates
    material.maps[static_cast<std::size_t>(slot)] = {.map = map, .amount = amount};
    return scene.Material(name, material);
}

// Equal texels.
support::ePicture Flat(const eBytes& texel, int width = 4, int height = 4) {
    support::ePicture picture{width, height, static_cast<int>(texel.size()), {}};
    for (int i = 0; i < width * height; ++i) {
        picture.values.insert(picture.values.end(), texel.begin(), texel.end());
    }
    return picture;
}

std::span<const std::uint8_t> BytesOf(const std::string& file) {
    return {reinterpret_cast<const std::uint8_t*>(file.data()), file.size()};
}

// Bits a pixel, and the first pixel's blue, green, red and alpha.
std::vector<int> FirstOfBmp(const std::string& file) {
    std::string problem;
    const auto picture = ReadBmp(BytesOf(file), problem);
    if (!picture || picture->image.pixels.empty()) {
        return {};
    }
    const auto& pixels = picture->image.pixels;
    return {picture->bitsPerPixel, pixels[0], pixels[1], pixels[2], pixels[3]};
}

// The first pixel's red, green, blue and alpha.
eBytes FirstOfDds(const std::string& file) {
    const eDdsFile dds = ReadDds(BytesOf(file));
    if (!dds.problems.empty()) {
        return {};
    }
    const eBytes pixels = DecodeDdsLevel(BytesOf(file), dds, 0).rgba;
    return {pixels.begin(), pixels.begin() + 4};
}

// What happens to the files of a run, by the path below "game".
class eActions {
public:
    explicit eActions(const eExportRun& run)
        : previous(
              platform::SetFileObserver([this, &run](platform::eFileAction action, const std::string& path) {
                  const std::string root = run.folder / "game/";
                  if (path.starts_with(root)) {
                      byFile[path.substr(root.size())] = action;
                  }
              })) {}
    ~eActions() { platform::SetFileObserver(previous); }
    eActions(const eActions&) = delete;
    eActions& operator=(const eActions&) = delete;

    std::map<std::string, platform::eFileAction> byFile;

private:
    platform::eFileObserver previous;
};

std::vector<std::string> FilesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

// A block of one colour keeps green and blue within 1.
testing::Matcher<std::uint8_t> IsNear(int value) {
    return AllOf(testing::Ge(value - 1), testing::Le(value + 1));
}

class WriteTexture : public testing::Test {
protected:
    int Bitmap(const std::string& file) {
        return scene.Map(eBitmapMap{.file = FromUtf8(art / file).text}, {}, "map of " + file);
    }
    // A material of the file's name whose map in the slot shows the file.
    int Using(int slot, const std::string& file, float amount = 1) {
        return AddMaterial(scene, file, slot, Bitmap(file), amount);
    }

    support::eTempFolder art;
    eSceneBuilder scene;
};

// Catches a picture copied where it must be rebuilt or the other way round, a wrong depth, an amount that is
// not applied, or is applied to colours, and channels of the normal map that change places.
TEST_F(WriteTexture, SlotAndKindDecideWhatComesOut) {
    const eBytes color = {201, 101, 31};
    for (const char* file : {"hull.tga", "gloss.tga", "dents.tga"}) {
        art.Write(file, support::Tga(Flat(color)));
    }
    for (const char* file : {"deck.png", "shine.png", "normals.png", "wall.bmp.psd", "curve.png"}) {
        art.Write(file, support::Png(Flat(color)));
    }
    art.Write("Net.PNG", support::Png(Flat({201, 101, 31, 51})));
    art.Write("clear.png", support::Png(Flat({201, 101, 31, 51})));
    art.Write("paint.bmp", support::Bmp(Flat(color)));
    // Kinds that only the engine needs to know.
    art.Write("top.bmp", Patched(support::Bmp(Flat(color)), {{22, -4}, {23, -1}, {24, -1}, {25, -1}}));
    art.Write("runs.bmp", Patched(support::Bmp(Flat(color)), {{30, 1}, {34, 48}}));
    art.Write("fields.bmp", Patched(support::Bmp(Flat(color)), {{28, 16}, {30, 3}}));
    art.Write("palette.tga",
              Patched(support::Tga(Flat({3})), {{1, 1}, {2, 1}, {5, 4}, {7, 15}}) + "-palette");
    art.Write("grey.bmp.psd", "8BPS");
    art.Write("ground.tif", support::Tif(Flat(color)));
    art.Write("rock.dds", support::Dds(Flat(color)));
    art.Write("skin.jpg", support::Jpg(Flat({90, 90, 90})));
    const int normals = scene.Map(eNormalBumpMap{.normal = Bitmap("normals.png")});
    const int curve = scene.Map(eBitmapMap{.file = art / "curve.png", .amount = 0.5F, .invert = true},
                                {.offset = {0.3F, 0}, .tiling = {7, 3}, .angle = 30});
    AddModel(scene, "m",
             {Using(host::kDiffuseMap, "hull.tga"), Using(host::kSpecularLevelMap, "gloss.tga", 0.5F),
              Using(host::kBumpMap, "dents.tga", 0.5F), Using(host::kDiffuseMap, "deck.png"),
              Using(host::kSpecularLevelMap, "shine.png", 0.25F), Using(host::kDiffuseMap, "wall.bmp.psd"),
              Using(host::kDiffuseMap, "Net.PNG"), Using(host::kSpecularLevelMap, "clear.png"),
              Using(host::kDiffuseMap, "paint.bmp"), Using(host::kDiffuseMap, "skin.jpg"),
              Using(host::kDiffuseMap, "top.bmp"), Using(host::kDiffuseMap, "runs.bmp"),
              Using(host::kDiffuseMap, "fields.bmp"), Using(host::kDiffuseMap, "palette.tga"),
              Using(host::kDiffuseMap, "grey.bmp.psd"), Using(host::kDiffuseMap, "ground.tif"),
              Using(host::kBumpMap, "rock.dds"), AddMaterial(scene, "normals", host::kBumpMap, normals, 0.1F),
              AddMaterial(scene, "curve", host::kDiffuseMap, curve)});
    eExportRun run(scene.Build());
    run.Do();
    EXPECT_THAT(run.Messages(), IsEmpty());
    for (const char* copied : {"hull.tga", "gloss.tga", "wall.bmp.psd", "paint.bmp", "top.bmp", "runs.bmp",
                               "fields.bmp", "palette.tga", "grey.bmp.psd"}) {
        EXPECT_EQ(run.Read(std::string("m/") + copied), art.Read(copied)) << copied;
    }
    EXPECT_THAT(FirstOfBmp(run.Read("m/deck.bmp")), ElementsAre(24, 31, 101, 201, 255));
    EXPECT_THAT(FirstOfBmp(run.Read("m/net.bmp")), ElementsAre(32, 31, 101, 201, 51));
    EXPECT_THAT(FirstOfBmp(run.Read("m/shine.bmp")), ElementsAre(24, 28, 28, 28, 255));
    EXPECT_THAT(FirstOfBmp(run.Read("m/clear.bmp")), ElementsAre(24, 111, 111, 111, 255));
    EXPECT_THAT(FirstOfBmp(run.Read("m/skin.bmp")), ElementsAre(24, 90, 90, 90, 255));
    EXPECT_THAT(FirstOfBmp(run.Read("m/curve.bmp")), ElementsAre(24, 112, 77, 27, 255));
    EXPECT_THAT(FirstOfDds(run.Read("m/normals.dds")), ElementsAre(0, IsNear(154), IsNear(31), 201))
        << "red 0, green 255 - y, blue z, alpha x";
    EXPECT_EQ(FirstOfDds(run.Read("m/dents.dds"))[3], 127) << "even ground";
    EXPECT_EQ(FirstOfDds(run.Read("m/rock.dds"))[3], 127);
    EXPECT_THAT(FirstOfBmp(run.Read("m/ground.bmp")), ElementsAre(24, 31, 101, 201, 255));
    EXPECT_THAT(run.Text("m/.material"), HasSubstr("{simple \"wall.bmp.psd\"\n\t{diffuse \"wall.bmp\"}"));
}

// Catches a copy that is made every time, a texture that is never made again, and the time of the source
// given to the copy, which the next run would take for old.
TEST_F(WriteTexture, WhatIsUpToDateIsKept) {
    const std::map<std::string, std::string> made = {
        {"hull.tga", "m/hull.tga"}, {"deck.png", "m/deck.bmp"}, {"dents.png", "m/dents.dds"}};
    const auto hour = std::chrono::hours(1);
    for (const auto& [file, target] : made) {
        const support::ePicture picture = Flat({50, 60, 70});
        art.Write(file, file.ends_with("tga") ? support::Tga(picture) : support::Png(picture));
        std::filesystem::last_write_time(art / file, std::filesystem::file_time_type::clock::now() - hour);
    }
    AddModel(scene, "m",
             {Using(host::kDiffuseMap, "hull.tga"), Using(host::kDiffuseMap, "deck.png"),
              Using(host::kBumpMap, "dents.png")});
    eExportRun run(scene.Build());
    eActions actions(run);
    using enum platform::eFileAction;
    const auto act = [&] {
        actions.byFile.clear();
        run.Do();
        return std::vector{actions.byFile["m/hull.tga"], actions.byFile["m/deck.bmp"],
                           actions.byFile["m/dents.dds"], actions.byFile["m/tex2_0.bmp"]};
    };
    EXPECT_THAT(act(), ElementsAre(Copied, Written, Written, Written));
    const std::string content = run.Read("m/dents.dds");
    EXPECT_THAT(act(), ElementsAre(Kept, Kept, Kept, Written)) << "a map without file is made in every run";
    for (const auto& [file, target] : made) {
        std::filesystem::last_write_time(run.folder / ("game/" + target),
                                         std::filesystem::last_write_time(art / file) - hour);
    }
    EXPECT_THAT(act(), ElementsAre(Copied, Written, Written, Written));
    EXPECT_EQ(run.Read("m/dents.dds"), content);
    EXPECT_THAT(act(), ElementsAre(Kept, Kept, Kept, Written));
}

// Catches pictures that are lost in silence, half files, and a loss that only the first run tells.
TEST_F(WriteTexture, BadPicturesAreToldAndLeaveNothing) {
    const std::string tga = support::Tga(Flat({1, 2, 3}));
    const std::string png = support::Png(Flat({1, 2, 3}));
    const std::string bmp = support::Bmp(Flat({1, 2, 3}));
    struct eBad {
        const char* file;
        std::string content;
        const char* reason;
    };
    const std::vector<eBad> pictures = {
        {"empty.png", "", "в одном из видов: png, jpg, tga, bmp, psd, gif, tif, dds."},
        {"void.bmp", "", "обрывается раньше"},
        {"cut.png", png.substr(0, png.size() / 2), "обрывается раньше"},
        {"torn.tga", tga.substr(0, tga.size() / 2), "обрывается раньше"},
        {"broken.bmp", bmp.substr(0, bmp.size() / 2), "обрывается раньше"},
        {"runs.tga", Patched(tga, {{2, 10}}), "обрывается раньше"},
        {"half.dds", "DDS \x7C" + std::string(40, '\0'), "обрывается раньше"},
        {"text.bmp", "no picture at all", "не похожа на картинку"},
        {"words.dds", "no picture at all", "не похожа на картинку"},
        {"notes.tga.doc", "no picture at all", "не похожа на картинку"},
        {"named.tga", png, "не похожа на картинку"},
        {"called.bmp", tga, "не похожа на картинку"},
    };
    std::vector<int> materials;
    for (const eBad& picture : pictures) {
        art.Write(picture.file, picture.content);
        materials.push_back(Using(host::kDiffuseMap, picture.file));
    }
    art.Write("six.png", support::Png(Flat({9, 9, 9}, 6, 8)));
    materials.push_back(Using(host::kBumpMap, "six.png"));
    art.Write("barred.tga", tga);
    materials.push_back(Using(host::kDiffuseMap, "barred.tga"));
    art.MakeFolder("folder.png");
    materials.push_back(Using(host::kDiffuseMap, "folder.png"));
    const eBitmapMap sought{.file = "gone.png", .tried = {"/a/gone.png", "/b/gone.png"}};
    materials.push_back(AddMaterial(scene, "sought", host::kDiffuseMap, scene.Map(sought)));
    AddModel(scene, "m", materials);
    eExportRun run(scene.Build());
    run.folder.MakeFolder("game/m/barred.tga");
    for (const char* round : {"first", "second"}) {
        SCOPED_TRACE(round);
        run.Do();
        std::vector<testing::Matcher<std::string>> lines;
        for (const eBad& picture : pictures) {
            const std::string file = picture.file;
            lines.push_back(
                AllOf(HasSubstr("/" + file + "' (материал '" + file + "', карта 'map of " + file + "') "),
                      HasSubstr(picture.reason)));
        }
        lines.push_back(
            AllOf(HasSubstr("m/six.dds' (материал 'six.png', карта 'map of six.png') не записана"),
                  HasSubstr("6 и 8")));
        lines.push_back(
            AllOf(HasSubstr("Ошибка: Не удалось записать файл"), HasSubstr("карта 'map of barred.tga'")));
        lines.push_back(HasSubstr("folder.png (материал folder.png, карта map of folder.png) нет на диске"));
        lines.push_back(HasSubstr("карта ) нет на диске. Ее искали здесь:\n/a/gone.png\n/b/gone.png"));
        EXPECT_THAT(run.Messages(), testing::ElementsAreArray(lines));
        EXPECT_THAT(
            FilesIn(run.folder / "game/m"),
            ElementsAre(".material", ".mesh", "barred.tga", "called.bmp", "m.def", "m.mdl", "named.tga",
                        "notes.tga.doc", "six.dds", "tex12_0.bmp", "text.bmp", "words.dds"));
        EXPECT_EQ(run.Read("m/six.dds"), "");
    }
}

// Catches a map without area taken for a picture, and a file that is missing where the record names it.
TEST_F(WriteTexture, MapsWithoutFileAreEvaluatedWithTheirMaterial) {
    const int checker = scene.Map(eCheckerMap{.colors = {host::Color{1, 0, 0}, host::Color{0, 0, 1}}});
    AddModel(scene, "m", {AddMaterial(scene, "tiles", host::kDiffuseMap, checker)})
        .Child("bare")
        .Property("Poly")
        .Object(eMeshObject{support::TriangleMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}})})
        .Material(AddMaterial(scene, "flat", host::kDiffuseMap, checker));
    eExportRun run(scene.Build());
    run.Do();
    EXPECT_EQ(run.Read("m/tex1_0.bmp").size(), 54U) << "a mesh without coordinates";
    EXPECT_THAT(
        run.Messages(),
        Contains(HasSubstr("m/tex1_0.bmp' (материал 'flat', карта '') не записана:\nпо координатам мэша")));
    std::string problem;
    const auto tiles = ReadBmp(BytesOf(run.Read("m/tex0_0.bmp")), problem);
    ASSERT_TRUE(tiles) << problem;
    ASSERT_GT(tiles->image.width, 4);
    EXPECT_THAT(FirstOfBmp(run.Read("m/tex0_0.bmp")), ElementsAre(24, 0, 0, 255, 255));
    EXPECT_EQ(tiles->image.Pixel(tiles->image.width - 1, 0)[0], 255) << "the right half of the first row";
    EXPECT_EQ(tiles->image.Pixel(0, tiles->image.height - 1)[0], 255) << "the left half of the last row";
}

// Catches coordinates that leave their texel on the way through the map's tiling and back.
TEST_F(WriteTexture, TilingPicksNoNeighbour) {
    support::ePicture ramp{4096, 1, 3, {}};
    for (int x = 0; x < ramp.width; ++x) {
        ramp.values.insert(ramp.values.end(),
                           {static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(x >> 8), 7});
    }
    art.Write("ramp.png", support::Png(ramp));
    const int map =
        scene.Map(eBitmapMap{.file = art / "ramp.png"}, {.offset = {25.5F, 3.25F}, .tiling = {3, 3}});
    AddModel(scene, "m", {AddMaterial(scene, "ramp", host::kDiffuseMap, map)});
    eExportRun run(scene.Build());
    run.Do();
    std::string problem;
    const auto made = ReadBmp(BytesOf(run.Read("m/ramp.bmp")), problem);
    ASSERT_TRUE(made) << problem;
    for (int x = 0; x < ramp.width; ++x) {
        const std::uint8_t* const pixel = made->image.Pixel(x, 0);
        ASSERT_EQ(pixel[2] + 256 * pixel[1], x);
    }
}

// Catches a picture that loses its colours to the other place of its map, a file without ending, records and
// files of two names, and a form of a picture that is lost in silence.
TEST_F(WriteTexture, EachPlaceOfAMapGetsItsForm) {
    art.Write("atlas.png", support::Png({4, 1, 3, {255, 0, 0, 255, 0, 0, 0, 0, 255, 0, 0, 255}}));
    art.Write("skin.png", support::Png(Flat({201, 101, 31})));
    for (const char* file : {"wall.tga", "calm.tga", "bump.tga", "leaf.tga"}) {
        art.Write(file, support::Tga(Flat({201, 101, 31})));
    }
    art.Write("ore.dds", support::Dds(Flat({201, 101, 31})));
    const auto both = [this](const char* file, int slot, float amount) {
        const int map = Bitmap(file);
        eStandardMaterial material;
        material.maps[host::kDiffuseMap].map = map;
        material.maps[static_cast<std::size_t>(slot)] = {.map = map, .amount = amount};
        return scene.Material(file, material);
    };
    const auto part = [this](const char* name, const char* file, float left) {
        const eBitmapMap map{.file = art / file, .cropOrigin = {left, 0}, .cropSize = {0.5F, 1}};
        return AddMaterial(scene, name, host::kDiffuseMap, scene.Map(map, {}, name));
    };
    const int knob = scene.Map(eNormalBumpMap{.normal = Bitmap("bump.tga")});
    AddModel(scene, "m",
             {part("left", "atlas.png", 0), part("right", "atlas.png", 0.5F), part("cut", "leaf.tga", 0.5F),
              both("skin.png", host::kSpecularLevelMap, 0.5F), both("wall.tga", host::kBumpMap, 0.5F),
              both("calm.tga", host::kBumpMap, 0), both("ore.dds", host::kBumpMap, 0.5F),
              AddMaterial(scene, "knob", host::kDiffuseMap, knob)});
    eExportRun run(scene.Build());
    const std::string told = "' одна, а нужна двум картам в разном виде: материал '";
    for (const char* round : {"first", "second"}) {
        SCOPED_TRACE(round);
        run.Do();
        EXPECT_THAT(
            run.Messages(),
            ElementsAre(HasSubstr("m/atlas" + told + "left' (карта 'left') и материал 'right'"),
                        HasSubstr("leaf.tga' (материал 'cut', карта 'cut') взята как есть: вырезка"),
                        HasSubstr("m/skin" + told + "skin.png'"), HasSubstr("m/ore" + told + "ore.dds'")));
        EXPECT_THAT(FirstOfBmp(run.Read("m/atlas.bmp")), ElementsAre(24, 0, 0, 255, 255));
        EXPECT_THAT(FirstOfBmp(run.Read("m/skin.bmp")), ElementsAre(24, 31, 101, 201, 255));
        EXPECT_EQ(run.Read("m/ore.dds"), art.Read("ore.dds"));
        EXPECT_EQ(FirstOfDds(run.Read("m/wall.dds"))[3], 127);
        EXPECT_THAT(FilesIn(run.folder / "game/m"),
                    ElementsAre(".material", ".mesh", "atlas.bmp", "bump.bmp", "calm.tga", "leaf.tga",
                                "m.def", "m.mdl", "ore.dds", "skin.bmp", "wall.dds", "wall.tga"));
    }
    EXPECT_THAT(run.Text("m/.material"),
                AllOf(HasSubstr("{simple \"knob\"\n\t{diffuse \"bump\"}"),
                      HasSubstr("{bump \"wall.tga\"\n\t{diffuse \"wall\"}\n\t{bump \"wall\"}")));
}

// A Structure with a nested model; the art's folder is the source of common textures.
class CommonTextures : public WriteTexture {
protected:
    void Export(int ship, int gun) {
        eNode root = AddModel(scene, "ship", {ship}).Property("Structure");
        root.Child("gun")
            .Property("Model=ship/gun")
            .Object(eHelperObject{})
            .Child("barrel")
            .Property("Poly")
            .Object(eBoxObject{1, 1, 1})
            .Material(gun);
        // The shared mesh brings the nested model's materials to the common folder.
        root.Child("spare").Property("Poly").Object(eBoxObject{1, 1, 1}).Material(gun);
        run.emplace(scene.Build());
        run->SetOptions([this](eExportOptions& options) {
            options.commonTextureSource = eName(FromUtf8(art / "Общее").text);
            options.commonTextureTarget = eName("texture/common/");
        });
        run->Do();
    }

    std::optional<eExportRun> run;
};

// Catches sub-folders that get lost, so that two pictures meet, and records that name another file.
TEST_F(CommonTextures, KeepTheirFoldersBelowTheTarget) {
    const support::ePicture picture = Flat({1, 2, 3});
    art.Write("общее/metal/iron.tga", support::Tga(picture));
    art.Write("общее/rust/iron.v1.png", support::Png(picture));
    art.Write("общее/rust/dents.tga", support::Tga(picture));
    art.Write("общее2/hull.tga", support::Tga(picture));
    scene.Settings().file = art / "scenes/ship.json";
    eStandardMaterial iron;
    iron.maps[host::kDiffuseMap].map =
        scene.Map(eBitmapMap{.file = FromUtf8("../общее/./metal/iron.tga").text});
    iron.maps[host::kBumpMap].map = Bitmap("общее/rust/dents.tga");
    eStandardMaterial rust;
    rust.maps[host::kDiffuseMap].map = Bitmap("общее/rust/iron.v1.png");
    rust.maps[host::kSpecularLevelMap].map = Bitmap("общее/../общее2/hull.tga");
    Export(scene.Material("iron", iron), scene.Material("rust", rust));
    EXPECT_THAT(run->Messages(), IsEmpty());
    EXPECT_THAT(run->Text("ship/common/.material"),
                AllOf(HasSubstr("{diffuse \"$/metal/iron\"}\n\t{bump \"$/rust/dents\"}"),
                      HasSubstr("{diffuse \"$/rust/iron.v1\"}\n\t{specular \"hull\"}")));
    for (const char* file : {"texture/common/metal/iron.tga", "texture/common/rust/iron.v1.bmp",
                             "texture/common/rust/dents.dds", "ship/common/hull.tga"}) {
        EXPECT_TRUE(run->Has(file)) << file;
    }
}

// Catches a texture of one material that another's replaces, or takes for its own, in silence.
TEST_F(CommonTextures, TwoThatClaimOneFileAreTold) {
    art.Write("a/wood.png", support::Png(Flat({1, 2, 3})));
    art.Write("b/wood.tga", support::Tga(Flat({4, 5, 6})));
    eStandardMaterial oak;
    oak.maps[host::kDiffuseMap].map = Bitmap("a/wood.png");
    eStandardMaterial ash;
    ash.maps[host::kDiffuseMap].map = Bitmap("b/wood.tga");
    ash.maps[host::kSpecularLevelMap].map = Bitmap("a/wood.png");
    const int plain = scene.Material("plain", eStandardMaterial{});
    AddModel(scene, "first", {scene.Material("oak", oak), scene.Material("ash", ash)});
    Export(plain, scene.Material("paint", eStandardMaterial{}));
    const std::string told = "' одна, а нужна двум картам в разном виде: материал '";
    EXPECT_THAT(
        run->Messages(),
        ElementsAre(HasSubstr("common/tex0_0" + told + "plain' (карта '') и материал 'paint' (карта '')"),
                    HasSubstr("first/wood" + told + "oak' (карта 'map of a/wood.png') и материал 'ash'"),
                    HasSubstr("first/wood" + told + "ash' (карта 'map of b/wood.tga') и материал 'ash'")));
}

}  // namespace
