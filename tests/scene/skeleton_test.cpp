#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "base/ansi.h"
#include "run/run_flags.h"
#include "scene/current_model.h"
#include "scene/scene_as_read.h"
#include "support/scene_builder.h"
#include "support/skeleton_walk.h"

namespace {

using namespace standalone;
using Skeleton = support::eSkeletonTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// The bone "a" below a root, written from the properties.
struct eOneBone {
    explicit eOneBone(const std::vector<std::string>& properties, std::uint32_t jointFlags = 0,
                      int exportIK = 1) {
        support::eSceneBuilder scene;
        support::eNode bone = scene.Node("root").Property("Model=m").Object(eHelperObject{}).Child("A");
        bone.Object(eBoxObject{1, 1, 1}).JointFlags(jointFlags);
        for (const std::string& property : properties) {
            bone.Property(property);
        }
        support::eSkeletonWalk walk(scene.Build());
        walk.run.options.exportIK = exportIK;
        walk.Do();
        mdl = walk.mdl;
        messages = walk.Messages();
    }
    // From the block of the bone on, without line ends and indentation.
    std::string Text() const {
        const std::string text = mdl.substr(mdl.find('}') + 1);
        return std::regex_replace(text.substr(0, text.rfind('}')), std::regex("\n\t*"), "");
    }

    std::string mdl;
    std::vector<std::string> messages;
};

// Would catch a bone that carries more or less than its own properties.
TEST_F(Skeleton, TheHeaderTellsJointParametersAndColor) {
    EXPECT_EQ(eOneBone({}).Text(), "{bone \"a\"}");
    EXPECT_EQ(eOneBone({"IKType=REVOLUTE"}).Text(), "{bone revolute \"a\"}");
    EXPECT_EQ(eOneBone({"IKType=socket"}, 0, 0).Text(), "{bone socket \"a\"}");
    EXPECT_EQ(eOneBone({"speed=1,5", "Color", "mode"}).Text(),
              "{bone \"a\"{parameters \"speed=1.5;mode;\"}{color}}");
    EXPECT_EQ(eOneBone({"Color=0xff00ff"}).Text(), "{bone \"a\"{color 0xff00ff}}");
    EXPECT_EQ(eOneBone({}, 1U << 7 | 1U << 6).Text(), "{bone revolute \"a\"}");
    EXPECT_EQ(eOneBone({}, 1U << 6).Text(), "{bone prizmatic \"a\"}");
    EXPECT_EQ(eOneBone({}, 1U << 6, 0).Text(), "{bone \"a\"}");

    for (const std::string type : {"hinge", ""}) {
        const eOneBone unknown({"IKType=" + type}, 1U << 6);
        EXPECT_EQ(unknown.Text(), "{bone \"a\"}");
        EXPECT_THAT(unknown.messages, ElementsAre("Ошибка: Неизвестный тип IK '" + type + "' в кости 'A'"));
    }
}

// Would catch a word of the artist's that takes the rest of the file with it, or one that is lost without
// need.
TEST_F(Skeleton, WordsThatTheGameCannotReadAreLeftOut) {
    for (const char* bad : {"} }", "{1", "\"red", "(1", "\xEA\xF0"}) {
        const std::string value(bad);
        const eOneBone bone({"Poly", "Color=" + value, "Layer=" + value});
        EXPECT_EQ(bone.Text(), "{bone \"a\"{view poly \"a\"}}") << value;
        EXPECT_THAT(bone.messages, ElementsAre(HasSubstr("свойства 'Color' узла 'A' не записано"),
                                               HasSubstr("свойства 'Layer' узла 'A' не записано")));
    }
    const eOneBone block({"Color={rgb 1 2 3}"});
    EXPECT_EQ(block.Text(), "{bone \"a\"{color {rgb 1 2 3}}}");
    EXPECT_THAT(block.messages, ElementsAre(HasSubstr("содержит недопустимые символы")));
}

// Would catch limits of the wrong joint, swapped or missing ends, and numbers read with another separator.
TEST_F(Skeleton, LimitsFollowTheJoint) {
    EXPECT_EQ(eOneBone({"IKType=revolute", "IKMin=-1,5", "IKMax=2"}).Text(),
              "{bone revolute \"a\"{limits -1.5 2}}");
    EXPECT_EQ(eOneBone({"IKType=prizmatic", "IKMin=5", "IKMax=1"}).Text(),
              "{bone prizmatic \"a\"{limits 1 5}}");
    EXPECT_EQ(eOneBone({"IKType=revolute", "IKMin=5"}).Text(), "{bone revolute \"a\"{limits 0 5}}");
    EXPECT_EQ(eOneBone({"IKType=revolute", "IKMax=-5"}).Text(), "{bone revolute \"a\"{limits -5 0}}");
    EXPECT_EQ(eOneBone({"IKType=socket", "IKMin=1", "IKLimit=0,5"}).Text(),
              "{bone socket \"a\"{limits 0.5}}");
    EXPECT_EQ(eOneBone({"IKType=revolute", "IKLimit=1"}).Text(), "{bone revolute \"a\"}");
    EXPECT_EQ(eOneBone({"IKSpeed=2"}).Text(), "{bone \"a\"}");
    EXPECT_EQ(eOneBone({"IKSpeed=2", "IKTerminate"}).Text(), "{bone \"a\"{speed 2}{terminator}}");
    EXPECT_EQ(eOneBone({"IKType=socket", "IKSpeed"}, 1U << 5).Text(),
              "{bone socket \"a\"{speed 0}{terminator}}");
    EXPECT_EQ(eOneBone({"IKType=revolute", "IKMin=1"}, 0, 0).Text(), "{bone revolute \"a\"}");
}

// Would catch marks of a view that are lost, in another order, or on another line.
TEST_F(Skeleton, TheViewTellsHowItIsDrawn) {
    EXPECT_EQ(eOneBone({"Poly"}).Text(), "{bone \"a\"{view poly \"a\"}}");
    const eOneBone marked(
        {"Poly", "NoGetShadows", "Ground", "Layer=top", "NoCastShadows", "DecalTarget", "NoGroupMesh"});
    EXPECT_THAT(marked.mdl,
                HasSubstr("\t\t{view poly \"a\" {ground}{decal_target}{no_group_mesh}{shadow_caster 0}"
                          "{shadow_receiver 0}\n\t\t\t{layer top}\n\t\t}\n"));
    EXPECT_EQ(eOneBone({"Poly", "NoCastShadows"}).Text(), "{bone \"a\"{view poly \"a\" {shadow_caster 0}}}");
    EXPECT_EQ(eOneBone({"Poly", "LODLastOff"}).Text(), "{bone \"a\"{view poly \"a\" {lod 0}}}");
}

// Would catch levels in blocks of their own, without entry, or a wrong last one.
TEST_F(Skeleton, ViewsOfAllLevelsStandInTheirBone) {
    root.Property("Poly");
    Box(root, "a_lod2").Property("Poly");
    support::eNode bone = Box(root, "a").Property("Poly");
    Box(root, "a_lod1").Property("Poly");
    support::eSkeletonWalk& walk = Walked();
    EXPECT_THAT(walk.mdl, HasSubstr("{view poly \"root\" {lod 0}"));
    EXPECT_THAT(walk.mdl, HasSubstr("\t{bone \"a\"\n"
                                    "\t\t{view poly \"a\" {lod 0}\n\t\t}\n"
                                    "\t\t{view poly \"a_lod1\" {lod 1}\n\t\t}\n"
                                    "\t\t{view poly \"a_lod2\" {lod 2 {last}}\n\t\t}\n"
                                    "\t}\n"));
    bone.Property("LODLastOff");
    EXPECT_THAT(Walked().mdl, HasSubstr("{view poly \"a_lod2\" {lod 2}"));
}

// Would catch matrices against the wrong parent, with scale, or in scene units, and a skewed one that passes
// silently.
TEST_F(Skeleton, MatricesStandAgainstTheBoneAbove) {
    scene.Settings().unitMetres = 0.01;
    root.Position(5, 6, 7);
    support::eNode big = Helper(root, "big").Position(100, 0, 0).Scale(2, 2, 2);
    Helper(big.Child("no_object").Position(0, 50, 0), "deep").Position(0, 0, 10).Visibility(0.4F);
    Helper(root, "Skew").Matrix({{1, 0, 0}, {0.6F, 0.8F, 0}, {0, 0, 1}, {0, 0, 0}});
    support::eSkeletonWalk& walk = Walked();
    EXPECT_EQ(walk.mdl,
              "{bone \"root\"\n"
              "\t{orientation\n\t\t1 \t 0 \t 0\n\t\t0 \t -1 \t 0\n\t\t0 \t 0 \t 1\n\t}\n"
              "\t{bone \"big\"\n\t\t{Position 1 \t 0 \t 0}\n"
              "\t\t{bone \"deep\"\n\t\t\t{Position 0 \t 0 \t 0.2}\n\t\t\t{visibility 0}\n\t\t}\n"
              "\t}\n"
              "\t{bone \"skew\"\n"
              "\t\t{orientation\n\t\t\t1 \t 0 \t 0\n\t\t\t0.6 \t 0.8 \t 0\n\t\t\t0 \t 0 \t 1\n\t\t}\n"
              "\t}\n"
              "}\n");
    EXPECT_THAT(walk.Messages(), ElementsAre("Ошибка: Матрица для кости 'skew' не ортогональна или содержит "
                                             "неодинаковое масштабирование по осям!"));
}

// Would catch a hidden subtree that reaches the file or a list, a hidden volume that is lost, and one that is
// lost below a node that shows nothing without a word.
TEST_F(Skeleton, HiddenBonesTakeTheirSubtreeWithThem) {
    support::eNode hidden = Helper(root, "hidden").Hidden().Property("Land");
    Helper(hidden, "below");
    Box(hidden, "volume_below").Property("Volume");
    support::eNode lone = root.Child("no_object").Hidden();
    support::eNode below = Helper(lone, "below_no_object").Property("Land");
    Box(below, "hull").Property("Volume").Hidden();
    Box(Helper(below, "hidden_below").Hidden(), "not_missed").Property("Volume");
    Helper(lone, "foot").Property("SupportPoint");
    Box(root, "hidden_volume").Property("Volume").Hidden();
    support::eSkeletonWalk& walk = Walked();
    EXPECT_THAT(walk.mdl, Not(HasSubstr("below")));
    ASSERT_EQ(walk.run.scene->models[0].volumes.size(), 1U);
    EXPECT_EQ(walk.run.scene->models[0].volumes[0]->GetName(), "hidden_volume");
    EXPECT_FALSE(walk.run.model->landPatch);
    EXPECT_THAT(walk.Messages(),
                ElementsAre("Advice: Узел 'no_object' скрыт, и вместе с ним не записано: 'Land' узла "
                            "'below_no_object', объем 'hull', точка опоры 'foot'.\n"
                            "Необходимо показать этот узел."));
}

// Would catch meshes read after they are written, written by the wrong node, or for nodes that ask for none.
TEST_F(Skeleton, MeshesAreReadOnTheWayDownAndWrittenOnTheWayBack) {
    root.Property("Poly");
    support::eNode arm = Box(root, "Arm").Property("Poly");
    Box(arm, "plain");
    Box(root, "ghost").Property("Poly").NotRenderable();
    root.Child("ring").Object(eCircleObject{.radius = 1}).Property("Poly");
    support::eSkeletonWalk& walk = Walked();
    EXPECT_THAT(walk.calls, ElementsAre("read root", "read Arm", "read plain", "write arm to own",
                                        "read ghost", "write root to own"));
    EXPECT_THAT(walk.mdl, HasSubstr("\t{bone \"ring\"\n\t}\n")) << "a shape is a bone without mesh";
    EXPECT_THAT(walk.mdl, Not(HasSubstr("view poly \"ghost\"")));
}

// Would catch geometry that options or the selection should have kept out.
TEST_F(Skeleton, OptionsKeepGeometryOut) {
    Box(root, "a").Property("Poly");
    Box(root, "b").Property("Poly").Selected();
    support::eSkeletonWalk selected(scene.Build());
    exportSelected = true;
    selected.Do();
    EXPECT_THAT(selected.calls, ElementsAre("read b", "write b to own"));

    support::eSkeletonWalk noMesh(scene.Build());
    noMesh.run.options.exportMesh = 0;
    noMesh.run.options.exportGeometry = 0;
    noMesh.Do();
    EXPECT_THAT(noMesh.calls, IsEmpty());
}

// Would catch an artist's "Poly" on nothing, or a voxel mesh, that goes unnoticed.
TEST_F(Skeleton, MeshesThatCannotBeWrittenAreTold) {
    Box(root, "Empty").Property("Poly");
    Box(root, "Old").Property("Voxels=1");
    support::eSkeletonWalk walk(scene.Build());
    walk.emptyMeshes = {"empty"};
    EXPECT_TRUE(walk.Do());
    EXPECT_THAT(walk.Messages(),
                ElementsAre("Ошибка: 'Empty': Помечен как полигональный, но не содержит ни одного полигона.\n"
                            "Необходимо убрать из параметров 'Poly' и переэкпортировать.",
                            "Ошибка: 'Old': Экспорт воксельных мэшей больше не поддерживается."));
    EXPECT_THAT(walk.mdl, HasSubstr("{view poly \"empty\"}"));
    EXPECT_THAT(walk.mdl, HasSubstr("{view poly \"old\"\n\t\t\t{pivot 0 \t 0 \t 0}\n\t\t}"));
}

// Would catch a group whose members become bones, whose parts miss the merged mesh, or that takes a stranger
// in.
TEST_F(Skeleton, AGroupFeedsItsMergedMesh) {
    support::eNode group = Helper(root, "Group").GroupHead().Property("CommonMesh");
    support::eNode part = Box(group, "part").GroupMember();
    Box(part, "inner").GroupMember();
    Box(root, "other").Property("CommonMesh=group");
    support::eSkeletonWalk& walk = Walked();
    EXPECT_THAT(walk.calls,
                ElementsAre("read root", "read Group into Group", "read part into Group",
                            "read inner into Group", "write group to own", "read other into Group"));
    EXPECT_TRUE(walk.run.model->bones[1].commonMesh);
    EXPECT_EQ(walk.run.model->bones[1].node, &walk.Node("Group"));
    EXPECT_THAT(walk.mdl, Not(HasSubstr("view poly \"other\"")));
    Helper(part, "Stranger");
    support::eSkeletonWalk stopped(scene.Build());
    EXPECT_FALSE(stopped.Do());
    EXPECT_THAT(stopped.Messages(),
                ElementsAre("Ошибка: Не относящаяся к группе кость 'Stranger' прилинкована внутрь группы!"));
}

// Would catch a fault that goes on with a half-known mesh, or leaves the text without its closing braces.
TEST_F(Skeleton, AFaultStopsTheWalkAndClosesItsBlocks) {
    struct eFault {
        const char* property;
        const char* message;
    };
    root.Property("Hold=x");
    const int broken = Helper(Helper(root, "outer"), "Broken").Number();
    Helper(root, "after");
    Box(root, "volume").Property("Volume");
    for (const eFault& fault :
         {eFault{"Mesh=nobody", "Ошибка: Кость 'nobody' для общего мэша не найдена!"},
          eFault{"CommonMesh=nobody", "Ошибка: Кость 'nobody' для общего мэша не найдена!"},
          eFault{"CommonMesh=volume",
                 "Ошибка: Кость 'volume' для общего мэша находится не в родительской иерархии!"}}) {
        scene.Settings().nodes[static_cast<std::size_t>(broken)].properties = fault.property;
        support::eSkeletonWalk walk(scene.Build());
        EXPECT_FALSE(walk.Do());
        EXPECT_THAT(walk.Messages(), ElementsAre(fault.message));
        EXPECT_EQ(walk.messages.boxes[0].box.icon, platform::eBoxIcon::None);
        EXPECT_THAT(walk.mdl, testing::EndsWith("\t{bone \"outer\"\n\t}\n}\n"));
        EXPECT_EQ(walk.def, "");
    }
}

// Would catch an artist's "Poly" on a part of a group that has no mesh, lost untold; and a word where it has.
TEST_F(Skeleton, APartOfAGroupWithoutMeshIsTold) {
    support::eNode group = Helper(root, "Group").GroupHead();
    Box(Box(group, "plain").GroupMember(), "Arm").GroupMember().Property("Poly");
    Box(Helper(root, "whole").GroupHead().Property("Poly"), "leg").GroupMember().Property("Poly");
    EXPECT_THAT(Walked().Messages(),
                ElementsAre("Ошибка: Узел 'Arm' помечен как полигональный, но группа 'Group', в которую он "
                            "входит, нет: его мэш не записан.\nНеобходимо указать 'Poly' у самой группы."));
}

// Would catch words lost or split wrongly, and a "Hold" read on another node than the root.
TEST_F(Skeleton, HoldsOfTheRootReachTheDefinition) {
    root.Property(" hold =  a  b ").Property("Hold=").Property("HOLD=c");
    Helper(root, "bone").Property("Hold=x");
    support::eSkeletonWalk& walk = Walked();
    EXPECT_EQ(walk.def, "{structure_bone\n\t{hold \"a\" \"b\"}\n\t{hold \"c\"}\n}\n");
}

// Would catch instances that are written twice, or shown under another name than they are written.
TEST_F(Skeleton, InstancesShowTheFirstOfThem) {
    support::eNode left = Box(root, "wheel_l").Property("Poly");
    root.Child("wheel_r").SameObject(left).Property("Poly");
    root.Child("spare").SameObject(left);
    support::eSkeletonWalk& walk = Walked();
    EXPECT_THAT(walk.calls, ElementsAre("read root", "read wheel_l of wheel_l", "write wheel_l to own",
                                        "read wheel_r of wheel_l", "read spare of wheel_l"));
    EXPECT_THAT(walk.mdl, HasSubstr("{bone \"wheel_r\"\n\t\t{view poly \"wheel_l\"}"));
    EXPECT_THAT(walk.mdl, Not(HasSubstr("{bone \"spare\"\n\t\t{view")));
    EXPECT_FALSE(walk.run.model->sharedMeshes.views.empty());
}

// Would catch a root that has no number, as its name says that it is a detail level.
TEST_F(Skeleton, ARootThatIsADetailLevelWritesNothing) {
    scene.Settings().nodes.front().name = "gun_lod1";
    Box(root.Property("Poly"), "below");
    EXPECT_EQ(Walked().mdl, "");
}

// Would catch a walk that goes on after the user's cancel, or an unbalanced text.
TEST_F(Skeleton, ACancelledWalkClosesItsBlocks) {
    root.Property("Poly");
    Helper(Helper(root, "first"), "second");
    support::eSkeletonWalk walk(scene.Build());
    int polls = 0;
    walk.host.SetCancelSource([&polls] { return ++polls > 2; });
    EXPECT_FALSE(walk.Do());
    EXPECT_THAT(walk.mdl, testing::EndsWith("\t{bone \"first\"\n\t}\n}\n"));
    EXPECT_THAT(walk.calls, ElementsAre("read root", "read first"));
}

}  // namespace
