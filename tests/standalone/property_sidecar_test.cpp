#include "standalone/loaders/shared/property_sidecar.h"

#include <gtest/gtest.h>

#include "base/ansi.h"

namespace standalone {
namespace {

eSceneData Tank() {
    eSceneData scene;
    scene.nodes = {
        {.name = "tank", .properties = "Model=a\r\nanimation=x\r\nanimation=y", .children = {1, 2}},
        {.name = "Hull", .parent = 0},
        {.name = "wheel", .parent = 0, .children = {3}},
        {.name = "wheel", .properties = "Poly\r\nColor=1", .parent = 2}};
    scene.roots = {0};
    return scene;
}

// Would catch a node missed by path, by name or by letter case; lines added where they should take the place
// of others, and the other way round; a heading that hits nothing and says nothing.
TEST(PropertySidecar, GivesNodesTheirLines) {
    eSceneData scene = Tank();
    eImportReport report;
    ApplyPropertySidecar(
        "\xEF\xBB\xBF# bought model\r\n[TANK]\nModel = "
        "units/tank\nanimation=a\nanimation=b\n[tank/hull]\nPoly\n"
        "Кисть=да\n[wheel]\nLayer=2\n[=tank/wheel/wheel]\nIKType=socket\n[weel]\nPoly\n"
        "[/]\nhost.selection.all=tank, hull\n",
        scene, report);
    EXPECT_FALSE(report.HasProblems());
    EXPECT_EQ(scene.nodes[0].properties, "Model = units/tank\r\nanimation=a\r\nanimation=b");
    EXPECT_EQ(scene.nodes[1].properties, std::string("Poly\r\nКисть=да"_ansi));
    EXPECT_EQ(scene.nodes[2].properties, "Layer=2");
    EXPECT_EQ(scene.nodes[3].properties, "IKType=socket");
    ASSERT_EQ(scene.selectionSets.size(), 1U);
    EXPECT_EQ(scene.selectionSets[0].nodes, (std::vector{0, 1}));
    EXPECT_EQ(report.TakeWarnings().at(0).text.english,
              "the properties beside the scene name nodes that it lacks: weel (nearest: wheel, Hull, tank)");

    // What is printed gives the same scene again.
    eSceneData bare = Tank();
    for (eNodeData& node : bare.nodes) {
        node.properties.clear();
    }
    ApplyPropertySidecar(PropertySidecarOf(scene), bare, report);
    for (std::size_t node = 0; node < bare.nodes.size(); ++node) {
        EXPECT_EQ(bare.nodes[node].properties, scene.nodes[node].properties);
    }
    ApplyPropertySidecar("Poly\n", bare, report);
    EXPECT_TRUE(report.HasProblems());
}

}  // namespace
}  // namespace standalone
