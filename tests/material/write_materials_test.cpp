#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "base/ansi.h"
#include "support/export_run.h"
#include "support/index_meshes.h"
#include "support/pictures.h"
#include "support/scene_builder.h"

namespace {

using support::eExportRun;
using support::eNode;
using support::eSceneBuilder;
using testing::ElementsAre;
using testing::HasSubstr;

// A model with a triangle of each material.
void AddTriangles(eSceneBuilder& scene, const std::vector<int>& materials) {
    eNode root = scene.Node("root").Property("Model=m").Object(standalone::eHelperObject{});
    for (std::size_t i = 0; i < materials.size(); ++i) {
        root.Child("part" + std::to_string(i))
            .Property("Poly")
            .Object(standalone::eMeshObject{
                support::TriangleMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}})})
            .Material(materials[i]);
    }
}

// Every choice of type and blend, in natural order, with plain colours as textures.
TEST(WriteMaterials, WritesTheToldText) {
    eSceneBuilder scene;
    const int plain = scene.Material("Mat10", standalone::eStandardMaterial{});
    const int glass = scene.Material("mat2", standalone::eStandardMaterial{.opacity = 0.5F});
    const int wrapped = scene.Material(
        "shiny",
        standalone::eSorrelMaterial{.material = glass, .blend = 3, .environment = 1, .strength = 0.25F});
    AddTriangles(scene, {plain, glass, wrapped});
    eExportRun run(scene.Build());
    run.Do();
    EXPECT_EQ(run.Text("m/.material"),
              "{simple \"mat2\"\n\t{diffuse \"tex1_0\"}\n\t{blend blend}\n}\n"
              "{simple \"mat10\"\n\t{diffuse \"tex0_0\"}\n\t{blend none}\n}\n"
              "{envmap \"shiny\"\n\t{diffuse \"tex2_0\"}\n\t{amount 0.25}\n\t{blend add}\n}\n");
    EXPECT_EQ(run.Read("m/tex0_0.bmp").size(), 54U + 2 * 8U);
}

TEST(WriteMaterials, TellsEqualNamesOfDifferentMaterials) {
    eSceneBuilder scene;
    AddTriangles(scene, {scene.Material("skin", standalone::eStandardMaterial{}),
                         scene.Material("SKIN", standalone::eStandardMaterial{.opacity = 0.5F})});
    eExportRun run(scene.Build());
    run.Do();
    EXPECT_THAT(run.Messages(), ElementsAre("Ошибка: Повторяющееся имя материала 'skin'!"));
    EXPECT_EQ(run.Text("m/.material"), "{simple \"skin\"\n\t{diffuse \"tex0_0\"}\n\t{blend none}\n}\n");
}

// A copied and a rebuilt texture, a missing one and a broken one: what is up to date stays untouched, what is
// newer is taken, and nothing is written for a picture that can't be read.
TEST(WriteMaterials, PutsTexturesInPlaceOnce) {
    support::eTempFolder art;
    const support::ePicture picture{2, 2, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}};
    art.Write("hull.tga", support::Tga(picture));
    art.Write("deck.png", support::Png(picture));
    art.Write("broken.png", "no picture");
    eSceneBuilder scene;
    std::vector<int> materials;
    for (const char* file : {"hull.tga", "deck.png", "none.png", "broken.png"}) {
        standalone::eStandardMaterial material;
        material.maps[host::kDiffuseMap].map = scene.Map(standalone::eBitmapMap{.file = art / file});
        materials.push_back(scene.Material(file, material));
    }
    AddTriangles(scene, materials);
    eExportRun run(scene.Build());
    run.Do();
    EXPECT_EQ(run.Read("m/hull.tga"), art.Read("hull.tga"));
    EXPECT_EQ(run.Read("m/deck.bmp").size(), 54U + 2 * 8U);
    EXPECT_FALSE(run.Has("m/none.bmp"));
    EXPECT_FALSE(run.Has("m/broken.bmp"));
    EXPECT_THAT(run.Messages(), ElementsAre(HasSubstr("broken.png")));
    EXPECT_THAT(run.Text("m/.material"), HasSubstr("{simple \"none.png\"\n\t{diffuse \"none\"}"));

    const auto timeOf = [&](const char* file) { return std::filesystem::last_write_time(run.folder / file); };
    const auto old = timeOf("game/m/deck.bmp") - std::chrono::hours(2);
    for (const char* file : {"game/m/deck.bmp", "game/m/hull.tga"}) {
        std::filesystem::last_write_time(run.folder / file, old);
    }
    std::filesystem::last_write_time(art / "deck.png", old - std::chrono::hours(1));
    run.Do();
    EXPECT_EQ(timeOf("game/m/deck.bmp"), old) << "the picture is older";
    EXPECT_GT(timeOf("game/m/hull.tga"), old) << "the picture is newer";
}

}  // namespace
