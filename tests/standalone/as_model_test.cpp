#include "standalone/data/as_model.h"

#include <gmock/gmock.h>

#include "base/ansi.h"
#include "support/scene_builder.h"

namespace {

using namespace standalone;
using testing::ElementsAre;

std::vector<std::string> Lines(const eSceneData& scene) {
    std::vector<std::string> lines;
    for (const eNodeData& node : scene.nodes) {
        const std::string parent =
            node.parent < 0 ? "" : scene.nodes[static_cast<std::size_t>(node.parent)].name + "/";
        lines.push_back(ToUtf8(parent + node.name + ": " + node.properties));
    }
    return lines;
}

// Would catch a root that is gathered although it is a model, geometry without "Poly" or marked twice, and
// references that point to other nodes once the order has changed.
TEST(AsModel, RootsWithoutAModelAreGathered) {
    support::eSceneBuilder scene;
    support::eNode body = scene.Node("body").Property("a=1").Object(eBoxObject{1, 1, 1});
    support::eNode bone = body.Child("bone").Object(eHelperObject{});
    scene.Node("own").Property("xmodel=x").Object(eMeshObject{});
    support::eNode skin =
        scene.Node("skin").Object(eMeshObject{.mesh = support::GridMesh(1, 1)}).Property("poly=1");
    skin.Skin({bone}, {{{0, 1.0F}}});
    skin.Target(bone);
    scene.SelectionSet("set", {skin, bone});
    eSceneData made = scene.Build();
    GatherAsModel(made, "units\\Body");
    EXPECT_THAT(Lines(made), ElementsAre("Body_root: Model=units\\Body", "Body_root/body: a=1\r\nPoly",
                                         "body/bone: ", "Body_root/skin: poly=1", "own: xmodel=x"));
    EXPECT_THAT(made.roots, ElementsAre(0, 4));
    EXPECT_EQ(made.nodes[3].target, 2);
    EXPECT_THAT(made.selectionSets[0].nodes, ElementsAre(3, 2));
    const auto& object = made.objects[static_cast<std::size_t>(made.nodes[3].object)];
    EXPECT_THAT(std::get<eSkinModifier>(object.modifiers[0]).bones, ElementsAre(2));
    EXPECT_TRUE(std::holds_alternative<eHelperObject>(
        made.objects[static_cast<std::size_t>(made.nodes[0].object)].kind));

    const eSceneData before = made;
    GatherAsModel(made, "again");
    EXPECT_TRUE(made == before);
}

// Would catch two bones with one name in the output, and an ending that meets another name.
TEST(AsModel, NamesDifferOnceTheyAreCleaned) {
    support::eSceneBuilder scene;
    for (const char* name : {"Arm", "arm_2", "ARM", "arm_vol", "Рука", "Нога", "a b", "a_b"}) {
        scene.Node(FromUtf8(name).text);
    }
    eSceneData made = scene.Build();
    MakeNamesUnique(made);
    std::vector<std::string> names;
    for (const eNodeData& node : made.nodes) {
        names.push_back(ToUtf8(node.name));
    }
    EXPECT_THAT(names, ElementsAre("Arm", "arm_2", "ARM_3", "arm_vol_4", "Рука", "Нога_2", "a b", "a_b_2"));
}

}  // namespace
