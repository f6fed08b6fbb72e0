#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "base/ansi.h"
#include "support/export_run.h"
#include "support/index_meshes.h"
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

}  // namespace
