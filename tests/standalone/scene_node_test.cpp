#include "standalone/objects/scene_node.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/ansi.h"
#include "standalone/standalone_host.h"
#include "support/scene_builder.h"

namespace {

using namespace standalone;

host::INode& Find(StandaloneHost& host, const char* name) {
    return *host.GetINodeByName(name);
}

void ExpectNear(const host::Matrix3& actual, const host::Matrix3& expected) {
    for (int row = 0; row < 4; ++row) {
        EXPECT_TRUE(actual.GetRow(row).Equals(expected.GetRow(row), 1e-5F))
            << "row " << row << ": " << actual.GetRow(row).x << " " << actual.GetRow(row).y << " "
            << actual.GetRow(row).z;
    }
}

// Would catch a hierarchy that loses the root or the order of children, and names found in the wrong order or
// only in their own letter case.
TEST(SceneNode, TheTreeHangsTogetherAndNamesAreFoundDepthFirst) {
    support::eSceneBuilder scene;
    support::eNode arm = scene.Node("arm");
    scene.Node("Twin").Property("second");
    arm.Child("hand").Child("twin").Property("first");
    arm.Child("Башня"_ansi);
    StandaloneHost host(scene.Build());

    host::INode& root = *host.GetRootNode();
    EXPECT_EQ(root.GetName(), "Scene Root");
    EXPECT_EQ(root.GetParentNode(), nullptr);
    ASSERT_EQ(root.NumberOfChildren(), 2);
    EXPECT_EQ(root.GetChildNode(0)->GetName(), "arm");
    EXPECT_EQ(root.GetChildNode(0)->GetParentNode(), &root);
    EXPECT_EQ(root.GetChildNode(0)->GetChildNode(1)->GetParentNode(), root.GetChildNode(0));
    EXPECT_TRUE(HasUserPropString(Find(host, "TWIN"), "first"));
    EXPECT_NE(host.GetINodeByName("БАШНЯ"_ansi), nullptr);
    EXPECT_EQ(host.GetINodeByName("nobody"), nullptr);
    EXPECT_LT(Find(host, "arm").IdentityOrder(), Find(host, "hand").IdentityOrder());
    EXPECT_LT(root.IdentityOrder(), Find(host, "arm").IdentityOrder());
}

// Would catch a reader that trims too little, takes the last match, or stops at a missing "=".
TEST(SceneNode, PropertiesAreReadAsTheHostReadsThem) {
    support::eSceneBuilder scene;
    scene.Node("n")
        .Property("  Key \t=  a = b \t")
        .Property("")
        .Property("Flag")
        .Property("key=later\rAfterCr=1\nAfterLf = -12abc")
        .Property("Ключ=да"_ansi)
        .Property("word=none")
        .Property("big=99999999999");
    StandaloneHost host(scene.Build());
    host::INode& node = Find(host, "n");

    std::string value;
    EXPECT_TRUE(node.GetUserPropString("KEY", value));
    EXPECT_EQ(value, "a = b");
    EXPECT_TRUE(node.GetUserPropString("flag", value));
    EXPECT_EQ(value, "");
    EXPECT_TRUE(HasUserPropString(node, "КЛЮЧ"_ansi));
    value = "untouched";
    EXPECT_FALSE(node.GetUserPropString("ke", value));
    EXPECT_EQ(value, "untouched");
    int number = 7;
    EXPECT_TRUE(node.GetUserPropInt("AfterCr", number));
    EXPECT_EQ(number, 1);
    EXPECT_TRUE(node.GetUserPropInt("AfterLf", number));
    EXPECT_EQ(number, -12);
    EXPECT_TRUE(node.GetUserPropInt("word", number));
    EXPECT_EQ(number, 0);
    EXPECT_TRUE(node.GetUserPropInt("big", number));
    EXPECT_EQ(number, std::numeric_limits<int>::max());
}

// Would catch a rotation of the wrong sense, and scale, rotation, translation or parents in the wrong order.
TEST(SceneNode, MatricesFollowTheDocument) {
    support::eSceneBuilder scene;
    support::eNode turned = scene.Node("turned").Rotation({0, 0, 1}, 90).Scale(2, 3, 4).Position(10, 20, 30);
    turned.Child("child").Position(1, 0, 0).Offset({.position = {0, 1, 0}, .scale = {5, 5, 5}});
    StandaloneHost host(scene.Build());

    ExpectNear(Find(host, "turned").GetNodeTM(0), {{0, 2, 0}, {-3, 0, 0}, {0, 0, 4}, {10, 20, 30}});
    ExpectNear(Find(host, "child").GetNodeTM(0), {{0, 2, 0}, {-3, 0, 0}, {0, 0, 4}, {10, 22, 30}});
    ExpectNear(Find(host, "child").GetObjTMAfterWSM(0), {{0, 10, 0}, {-15, 0, 0}, {0, 0, 20}, {7, 22, 30}});
    ExpectNear(host.GetRootNode()->GetNodeTM(0), {});
}

// Would catch the offset's rotation told in the document's sense instead of the host's.
TEST(SceneNode, TheOffsetRotationIsLeftHanded) {
    support::eSceneBuilder scene;
    scene.Node("n").Offset({.rotation = support::RotationAbout({0, 0, 1}, 90)});
    StandaloneHost host(scene.Build());
    const host::Quat rotation = Find(host, "n").GetObjOffsetRot();
    EXPECT_TRUE(rotation.Equals({0, 0, -std::sqrt(0.5F), std::sqrt(0.5F)}, 1e-6F));
    ExpectNear(MatrixFromQuat(rotation), Find(host, "n").GetObjTMAfterWSM(0));
}

constexpr int kTicks = 160;

// Would catch the long way round, extrapolation beyond the keys, a part that leaves its `transform` without
// keys of its own, and the first of two keys at one frame winning from that frame on.
TEST(SceneNode, KeysMoveEachPartOnItsOwn) {
    support::eSceneBuilder scene;
    support::eNode node = scene.Node("n").Scale(2, 2, 2);
    node.Key(
        {.frame = 10, .position = host::Point3{0, 0, 0}, .rotation = support::RotationAbout({0, 0, 1}, 0)});
    node.Key({.frame = 20, .position = host::Point3{10, 0, 0}});
    node.Key({.frame = 20, .position = host::Point3{100, 0, 0}});
    const eRotation quarter = support::RotationAbout({0, 0, 1}, 90);
    node.Key({.frame = 30, .rotation = eRotation{-quarter.x, -quarter.y, -quarter.z, -quarter.w}});
    StandaloneHost host(scene.Build());
    const auto at = [&](double frame) {
        return Find(host, "n").GetNodeTM(static_cast<host::TimeValue>(frame * kTicks));
    };

    EXPECT_EQ(at(0).GetTrans().x, 0);
    EXPECT_EQ(at(15).GetTrans().x, 5);
    EXPECT_FLOAT_EQ(at(17.5).GetTrans().x, 7.5F);
    EXPECT_EQ(at(20).GetTrans().x, 100);
    EXPECT_EQ(at(50).GetTrans().x, 100);
    const float half = std::sqrt(0.5F);
    ExpectNear(at(20), {{2 * half, 2 * half, 0}, {-2 * half, 2 * half, 0}, {0, 0, 2}, {100, 0, 0}});
    ExpectNear(at(99), {{0, 2, 0}, {-2, 0, 0}, {0, 0, 2}, {100, 0, 0}});
}

// Would catch position keys that are lost beside a matrix, or that take the matrix's axes with them.
TEST(SceneNode, PositionKeysReplaceTheFourthRowOfAMatrix) {
    support::eSceneBuilder scene;
    scene.Node("n")
        .Matrix({{1, 0, 0}, {0.5F, 1, 0}, {0, 0, -1}, {9, 9, 9}})
        .Key({.frame = 5, .position = host::Point3{1, 2, 3}});
    StandaloneHost host(scene.Build());
    ExpectNear(Find(host, "n").GetNodeTM(0), {{1, 0, 0}, {0.5F, 1, 0}, {0, 0, -1}, {1, 2, 3}});
}

// Would catch a matrix cache that answers with another time, node or frame's matrix, or with that of a page
// which has been given to another node: any order of questions must give what a fresh cache gives.
TEST(WorldMatrices, TheOrderOfQuestionsDoesNotMatter) {
    support::eSceneBuilder builder;
    builder.Settings().lastFrame = 200;
    support::eNode node = builder.Node("n0");
    for (int i = 1; i <= 6; ++i) {
        node.Key({.frame = 0, .position = host::Point3{0, 0, 0}});
        node.Key({.frame = 100.0 * i,
                  .position = host::Point3{1, 2, 3},
                  .rotation = support::RotationAbout({1, 1, 0}, 170)});
        node = node.Child("n" + std::to_string(i));
    }
    const eSceneData scene = builder.Build();
    for (const std::size_t pages : {std::size_t{1}, std::size_t{5}, eWorldMatrices::kMostPages}) {
        eWorldMatrices matrices(scene, pages);
        unsigned state = 1;
        for (int i = 0; i < 1000; ++i) {
            state = state * 1664525U + 1013904223U;
            const int number = static_cast<int>((state >> 8) % 7);
            // Mostly whole frames inside the range, some outside it or between two.
            const host::TimeValue time =
                static_cast<int>(state >> 12 & 255U) * kTicks + (i % 7 == 0 ? 13 : 0);
            EXPECT_EQ(matrices.At(number, time), eWorldMatrices(scene).At(number, time))
                << number << " at " << time << " with " << pages << " pages";
        }
    }
}

// Would catch visibility that fades between keys or reads the later key too early.
TEST(SceneNode, VisibilityHoldsFromKeyToKey) {
    support::eSceneBuilder scene;
    scene.Node("keyed").VisibilityKey(10, 0).VisibilityKey(20, 1);
    scene.Node("plain").Visibility(0.25F);
    StandaloneHost host(scene.Build());
    host::INode& keyed = Find(host, "keyed");
    EXPECT_EQ(keyed.GetVisibility(0), 0);
    EXPECT_EQ(keyed.GetVisibility(20 * kTicks - 1), 0);
    EXPECT_EQ(keyed.GetVisibility(20 * kTicks), 1);
    EXPECT_EQ(Find(host, "plain").GetVisibility(5), 0.25F);
}

class Tag : public host::RenderData {};

// Would catch a hold that keeps flags, takes back what happened before it, or mixes up nested holds.
TEST(Hold, TakesBackTheFlagsOfItsTime) {
    support::eSceneBuilder scene;
    scene.Node("n").JointFlags(0x80);
    StandaloneHost host(scene.Build());
    host::INode& node = Find(host, "n");
    EXPECT_EQ(node.AnimatableFlags(), 0x80U);
    node.SetAnimatableFlags(1);
    host.theHold().Begin();
    node.SetAnimatableFlags(2);
    node.SetAnimatableFlags(3);
    host.theHold().Begin();
    node.SetAnimatableFlags(4);
    node.SetRenderData(std::make_unique<Tag>());
    host.theHold().Cancel();
    EXPECT_EQ(node.AnimatableFlags(), 3U);
    host.theHold().Cancel();
    EXPECT_EQ(node.AnimatableFlags(), 1U);
    host.theHold().Cancel();
    EXPECT_EQ(node.AnimatableFlags(), 1U);
    EXPECT_NE(node.GetRenderData(), nullptr) << "what an exporter attaches is no change of the scene";
}

// Would catch wrong ticks, sets out of order and a folder told for every code.
TEST(StandaloneHost, AnswersForTheWholeScene) {
    support::eSceneBuilder scene;
    support::eNode a = scene.Node("a"), b = scene.Node("b");
    scene.SelectionSet("Walk", {b, a});
    scene.SelectionSet("walk", {a});
    scene.Settings().firstFrame = -5;
    scene.Settings().lastFrame = 20;
    scene.Settings().frameTicks = 100;
    scene.Settings().unitMetres = 0.01;
    StandaloneHost host(scene.Build());
    host.SetConfigFolder("conf");
    EXPECT_EQ(host.GetAnimRange().start, -500);
    EXPECT_EQ(host.GetAnimRange().end, 2000);
    EXPECT_EQ(host.GetMasterScale(host::Interface::kMetres), 0.01);
    EXPECT_EQ(host.GetDir(host::Interface::kPluginConfigDir), "conf");
    EXPECT_EQ(host.GetDir(1), "");
    ASSERT_EQ(host.GetNumNamedSelSets(), 2);
    EXPECT_EQ(host.GetNamedSelSetName(1), "walk");
    ASSERT_EQ(host.GetNamedSelSetItemCount(0), 2);
    EXPECT_EQ(host.GetNamedSelSetItem(0, 0)->GetName(), "b");
    EXPECT_FALSE(host.GetCancel());
    bool cancelled = false;
    host.SetCancelSource([&] { return cancelled; });
    EXPECT_FALSE(host.GetCancel());
    cancelled = true;
    EXPECT_TRUE(host.GetCancel());
}

}  // namespace
