#include "scene/bones/bone_tree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/ansi.h"
#include "scene/current_model.h"
#include "scene/scene_as_read.h"
#include "support/scene_builder.h"
#include "support/skeleton_walk.h"

namespace {

using namespace standalone;
using BoneTree = support::eSkeletonTest;
using testing::ElementsAre;
using testing::IsEmpty;

// Would catch an order of numbers other than bone, its levels, the bones below it, and a group whose members
// count as objects linked to a level.
TEST_F(BoneTree, NumbersFollowTheWalk) {
    Helper(root, "a_lod2");
    support::eNode a = Helper(root, "a");
    Helper(a, "below");
    Helper(root, "A_lod1");
    Helper(root, "b");
    Helper(root, "orphan_lod1");
    Helper(root, "wheel");
    Helper(root, "wheel2_lod1");
    Helper(Helper(root, "wheel_lod1").GroupHead(), "part").GroupMember();
    support::eSkeletonWalk walk(scene.Build());
    EXPECT_FALSE(walk.Number());
    EXPECT_THAT(walk.BoneNames(),
                ElementsAre("root", "a", "a_lod1", "a_lod2", "below", "b", "wheel", "wheel_lod1"));
    EXPECT_EQ(walk.run.model->boneCount, 8);
    EXPECT_EQ(NodeIndex(walk.Node("below"), nullptr), 4);
    EXPECT_EQ(NodeIndex(walk.Node("orphan_lod1"), nullptr), -1);
    EXPECT_THAT(walk.Messages(), IsEmpty());
}

// Would catch bones below nodes that keep the walk out, and bones lost below nodes that let it through.
TEST_F(BoneTree, WhatStandsBetweenTwoBones) {
    Helper(Helper(root, "hidden").Hidden(), "x1");
    Helper(Helper(root, "volume").Property("Volume"), "x2");
    Helper(root.Child("lamp").Object(eLightObject{}), "x3");
    Helper(root.Child("nothing"), "through");
    Helper(root.Child("other").Object(eOtherObject{.superClass = 0x60, .classId = {1, 1}}), "too");
    support::eNode group = Helper(root, "group").GroupHead();
    support::eNode member = Helper(group, "member").GroupMember();
    Helper(member, "inner").GroupMember();
    support::eSkeletonWalk walk(scene.Build());
    EXPECT_FALSE(walk.Number());
    EXPECT_THAT(walk.BoneNames(), ElementsAre("root", "through", "too", "group"));
    EXPECT_EQ(NodeIndex(walk.Node("inner"), nullptr), 3);
    EXPECT_EQ(ParentBone(walk.Node("inner")), &walk.Node("group"));
    EXPECT_EQ(ParentBone(walk.Root()), walk.host.GetRootNode());
}

// Would catch a gap that passes silently, or levels behind it that are not told.
TEST_F(BoneTree, FaultsOfDetailLevelsAreTold) {
    Helper(root, "Arm");
    Helper(root, "arm_lod2");
    support::eNode last = Helper(root, "Arm_LOD3");
    Helper(last, "x");
    Helper(last, "y");
    support::eSkeletonWalk walk(scene.Build());
    EXPECT_TRUE(walk.Number());
    EXPECT_THAT(
        walk.Messages(),
        ElementsAre("Ошибка: В кости 'arm' пропущен уровень детализации №1!",
                    "Ошибка: В кости 'arm' пропущен уровень детализации №2!",
                    "Ошибка: К кости уровня детализации 'Arm_LOD3' не должны быть прилинкованы объекты!"));
}

// Would catch pairs told too seldom, too often or in another order.
TEST_F(BoneTree, EveryPairOfEqualNamesIsTold) {
    Helper(root, "Arm");
    Helper(root, "leg");
    Helper(Helper(root, "x"), "arm");
    Helper(root, "Leg");
    Helper(root, "arm_vol");
    support::eSkeletonWalk walk(scene.Build());
    EXPECT_TRUE(walk.Number());
    EXPECT_THAT(walk.Messages(), ElementsAre("Ошибка: Найдено повторяющееся имя кости: arm!",
                                             "Ошибка: Найдено повторяющееся имя кости: arm!",
                                             "Ошибка: Найдено повторяющееся имя кости: leg!",
                                             "Ошибка: Найдено повторяющееся имя кости: arm!"));
}

// Would catch lights that are off, hidden, or switched out by the option.
TEST_F(BoneTree, LightsAreCollectedOnTheWay) {
    root.Child("on").Object(eLightObject{});
    root.Child("off").Object(eLightObject{.on = false});
    root.Child("hidden").Hidden().Object(eLightObject{});
    support::eSkeletonWalk walk(scene.Build());
    walk.Number();
    ASSERT_EQ(walk.run.scene->sceneLights.size(), 1U);
    EXPECT_EQ(walk.run.scene->sceneLights[0]->Node().GetName(), "on");
    walk.run.scene->sceneLights.clear();
    walk.run.options.exportLightsCameras = 0;
    walk.Number();
    EXPECT_THAT(walk.run.scene->sceneLights, IsEmpty());
}

// Would catch nested models that are numbered as bones, or found in another order.
TEST_F(BoneTree, NestedModelsAreFoundInScanModeOnly) {
    root.Property("Structure");
    Helper(Helper(root, "first").Property("Model=a"), "inside");
    Helper(root, "bone");
    Helper(root, "second").Property("Model=b");
    Helper(root, "ghost").Property("Model=c").Hidden();
    support::eSkeletonWalk walk(scene.Build());
    walk.run.model->structureMode = true;

    int number = 0;
    EXPECT_FALSE(CollectBones(walk.run, walk.Root(), number, true));
    ASSERT_EQ(walk.run.scene->models.size(), 2U);
    EXPECT_EQ(walk.run.scene->models[0].root->GetName(), "first");
    EXPECT_EQ(walk.run.scene->models[1].root->GetName(), "second");
    EXPECT_FALSE(walk.Number());
    EXPECT_THAT(walk.BoneNames(), ElementsAre("root", "bone"));
}

}  // namespace
