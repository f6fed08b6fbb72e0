#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>

#include "base/ansi.h"
#include "platform/write_fence.h"
#include "support/environment.h"
#include "support/export_run.h"
#include "support/scene_builder.h"

namespace {

using namespace standalone;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

support::eNode Model(support::eSceneBuilder& scene, const char* name, const std::string& path) {
    return scene.Node(name).Property("Model=" + path).Object(eHelperObject{});
}

support::eNode Box(support::eNode parent, const char* name) {
    return parent.Child(name).Object(eBoxObject{1, 1, 1});
}

std::vector<std::string> ReportedRoots(const support::eExportRun& run, bool skipped) {
    std::vector<std::string> roots;
    for (const eModelReport& report : run.exporter.modelReports) {
        if (report.skipped == skipped) {
            roots.push_back(report.root);
        }
    }
    return roots;
}

// Would catch any change of the text that the game reads: token order, blanks, tabs, line ends, rounding,
// the mirrored root.
TEST(Run, ASmallModelComesOutByteForByte) {
    support::eSceneBuilder scene;
    support::eNode arm = Box(Model(scene, "root", "units/tank"), "arm").Position(0, 0, 1);
    arm.Property("Poly").Property("IKType=revolute").Property("IKMin=-1").Property("IKMax=1");
    arm.Property("speed=1,5");
    support::eExportRun run(scene.Build());

    EXPECT_EQ(run.Do(), 1);
    EXPECT_THAT(run.Messages(), IsEmpty());
    const std::string text = run.Read("units/tank/tank.mdl");
    EXPECT_EQ(text.substr(text.find("{skeleton")),
              "{skeleton\r\n"
              "\t{bone \"root\"\r\n"
              "\t\t{orientation\r\n"
              "\t\t\t1 \t 0 \t 0\r\n"
              "\t\t\t0 \t -1 \t 0\r\n"
              "\t\t\t0 \t 0 \t 1\r\n"
              "\t\t}\r\n"
              "\t\t{bone revolute \"arm\"\r\n"
              "\t\t\t{parameters \"speed=1.5;\"}\r\n"
              "\t\t\t{limits -1 1}\r\n"
              "\t\t\t{Position 0 \t 0 \t 1}\r\n"
              "\t\t\t{view poly \"arm\"}\r\n"
              "\t\t}\r\n"
              "\t}\r\n"
              "}\r\n");
    EXPECT_EQ(run.Read("units/tank/tank.def"), "{entity\r\n}\r\n");
}

// Would catch a header that differs between two builds of the same input.
TEST(Run, TheHeaderTellsUserDateAndScene) {
    support::eSceneBuilder scene;
    scene.Settings().file = "d:/art/tank.max";
    Model(scene, "root", "tank");
    support::eExportRun run(scene.Build());
    support::SetEnvironment("SOURCE_DATE_EPOCH", "1795062558");
    run.Do();
    support::SetEnvironment("SOURCE_DATE_EPOCH", "");
    EXPECT_THAT(run.Read("tank/tank.mdl"), testing::StartsWith(";Exported by:\t "));
    EXPECT_THAT(
        run.Read("tank/tank.mdl"),
        HasSubstr("\r\n;Date:\t\t\t Thu Nov 19 04:29:18 2026\r\n;File:\t\t\t d:/art/tank.max\r\n{skeleton"));
}

// Would catch a run that writes something for an empty scene, or leaves the process's locale changed.
TEST(Run, AnEmptySceneIsToldAndOnlyTheOptionsAreSaved) {
    std::setlocale(LC_NUMERIC, "C.UTF-8");  // another than the run's own, where the system has it
    const std::string locale = std::setlocale(LC_NUMERIC, nullptr);
    support::eSceneBuilder scene;
    scene.Node("hidden").Property("Model=a").Object(eHelperObject{}).Hidden();
    scene.Node("hull_lod1").Property("Model=b").Object(eHelperObject{});
    support::eExportRun run(scene.Build());
    EXPECT_EQ(run.Do(), 1);
    EXPECT_THAT(run.Messages(),
                ElementsAre("Ошибка: Нечего экспортировать!\nВозможно, скрыта корневая кость."));
    EXPECT_FALSE(run.folder.Has("game"));
    EXPECT_TRUE(run.folder.Has("config/zyrexport.cfg"));
    EXPECT_EQ(std::setlocale(LC_NUMERIC, nullptr), locale);
    std::setlocale(LC_NUMERIC, "C");
}

// Would catch a cancelled dialog that leaves traces.
TEST(Run, ACancelledDialogTouchesNothing) {
    support::eSceneBuilder scene;
    Model(scene, "root", "tank");
    support::eExportRun run(scene.Build());
    run.exporter.optionsDialog = [](Export&) { return false; };
    EXPECT_EQ(run.Do(), 1);
    EXPECT_FALSE(run.folder.Has("game"));
    EXPECT_FALSE(run.folder.Has("config/zyrexport.cfg"));
    EXPECT_EQ(run.host.GetCommandPanelTaskMode(), 2);
}

// Would catch another order of the models, a root that is dropped in silence, or an "XModel" that is written.
TEST(Run, RootsAreExportedFromTheLastToTheFirst) {
    support::eSceneBuilder scene;
    Model(scene, "first", "a");
    scene.Node("Stray").Object(eHelperObject{});
    scene.Node("checked").Property("XModel=x").Object(eHelperObject{});
    Model(scene, "last", "b");
    support::eExportRun run(scene.Build());
    run.Do();
    EXPECT_THAT(run.Messages(),
                ElementsAre("Ошибка: В кости 'Stray' должно быть указано 'Model' или 'XModel'!"));
    EXPECT_THAT(ReportedRoots(run, false), ElementsAre("last", "first"));
    EXPECT_THAT(ReportedRoots(run, true), ElementsAre("checked"));
    EXPECT_FALSE(run.Has("x"));
}

// Would catch folders that depend on how an artist spells them.
TEST(Run, ThePropertyGivesFolderAndName) {
    support::eSceneBuilder scene;
    Model(scene, "a", "Units\\Big Tank.v2");
    Model(scene, "b", "Дом"_ansi);
    support::eExportRun run(scene.Build());
    run.Do();
    EXPECT_TRUE(run.Has("units/big_tank.v2/big_tank.mdl"));
    EXPECT_TRUE(run.Has("___/___.mdl"));
    EXPECT_EQ(run.exporter.modelReports[1].folder, eName(run.folder / "game/units/big_tank.v2"));
}

// Would catch the game's own entity definition overwritten, or a model text that stays old.
TEST(Run, ADefinitionOnceMadeIsNeverOverwritten) {
    support::eSceneBuilder scene;
    Model(scene, "root", "tank");
    support::eExportRun run(scene.Build());
    run.folder.Write("game/tank/tank.def", "mine");
    run.folder.Write("game/tank/tank.mdl", "old");
    run.Do();
    EXPECT_EQ(run.Read("tank/tank.def"), "mine");
    EXPECT_THAT(run.Read("tank/tank.mdl"), HasSubstr("{skeleton"));
}

// Would catch what hangs on another option than its own: files, the joints, geometry and baked light of a
// model; and an animation list that stays without animations.
TEST(Run, OptionsSwitchTheirOwnPartsOff) {
    support::eSceneBuilder scene;
    support::eNode root = Model(scene, "root", "tank").Property("animation=run,all,0-1");
    scene.SelectionSet("all", {root});
    eStandardMaterial paint;
    paint.maps[host::kDiffuseMap].map = scene.Map(eCheckerMap{});
    Box(root, "hull").Property("Poly").JointFlags(1U << 6).Material(scene.Material("paint", paint));
    Box(root, "gun").Property("IKType=revolute").Property("IKMax=1");
    Box(root, "engine").Property("Volume");
    Box(root, "yard").Property("Area");
    root.Child("lamp").Position(0, 0, 9).Object(eLightObject{});
    Model(scene, "still", "still");
    const auto told = [&](int eExportOptions::*option) {
        support::eExportRun run(scene.Build());
        run.SetOptions([&](eExportOptions& options) { options.*option = 0; });
        run.folder.Write("game/still/anim.txt", "old");
        run.Do();
        std::string text;
        for (const char* file :
             {"tank/tank.mdl", "tank/tank.def", "tank/.mesh", "tank/.material", "tank/tex0_0.bmp",
              "tank/anim.txt", "tank/run.anm", "still/still.mdl", "still/anim.txt"}) {
            text += run.Has(file) ? std::string(file) + ' ' : "";
        }
        const std::string model = run.Text("tank/tank.mdl") + run.Text("tank/tank.def");
        for (const char* part : {"prizmatic", "revolute", "limits", "{view", "\"engine\"", "\"yard\""}) {
            text += model.find(part) != std::string::npos ? std::string(part) + ' ' : "";
        }
        return text + std::to_string(run.Read("tank/.mesh").size());
    };
    const std::string texts = "tank/tank.mdl tank/tank.def ",
                      meshes = "tank/.mesh tank/.material tank/tex0_0.bmp ";
    const std::string motions = "tank/anim.txt tank/run.anm ";
    const std::string parts = "{view \"engine\" \"yard\" ", all = "prizmatic revolute limits " + parts;
    EXPECT_EQ(told(&eExportOptions::exportMesh), motions + "0");
    EXPECT_EQ(told(&eExportOptions::exportAnimation),
              texts + meshes + "still/still.mdl still/anim.txt " + all + "1035");
    EXPECT_EQ(told(&eExportOptions::exportIK),
              texts + meshes + motions + "still/still.mdl revolute " + parts + "1035");
    EXPECT_EQ(told(&eExportOptions::exportGeometry), texts + motions + "still/still.mdl " + all + "0");
    // Without light 24 vertices have no colour.
    EXPECT_EQ(told(&eExportOptions::exportLightsCameras),
              texts + meshes + motions + "still/still.mdl " + all + "939");
}

// Would catch a faulty model that takes others with it, or loses its earlier files.
TEST(Run, AFaultyModelIsLeftOut) {
    support::eSceneBuilder scene;
    Model(scene, "good", "good");
    support::eNode bad = Model(scene, "bad", "bad");
    Box(bad, "twin");
    Box(Box(bad, "x"), "Twin");
    support::eExportRun run(scene.Build());
    run.folder.Write("game/bad/bad.mdl", "earlier");
    run.Do();
    EXPECT_THAT(run.Messages(), ElementsAre("Ошибка: Найдено повторяющееся имя кости: twin!"));
    EXPECT_EQ(run.Read("bad/bad.mdl"), "earlier");
    EXPECT_TRUE(run.Has("good/good.mdl"));
    EXPECT_THAT(ReportedRoots(run, true), ElementsAre("bad"));
}

// Would catch a cancelled model with an open end, models behind it that are touched, or lost options.
TEST(Run, CancelClosesTheModelUnderWay) {
    support::eSceneBuilder scene;
    Model(scene, "never", "never");
    Box(Box(Model(scene, "root", "tank"), "first"), "second");
    support::eExportRun run(scene.Build());
    int polls = 0;
    run.host.SetCancelSource([&polls] { return ++polls > 2; });
    run.Do();
    EXPECT_THAT(run.Model("tank/tank.mdl"), EndsWith("\t\t{bone \"first\"\n\t\t}\n\t}\n}\n"));
    EXPECT_EQ(run.Text("tank/tank.def"), "{entity\n}\n");
    EXPECT_FALSE(run.Has("never") || run.Has("tank/tank.mdl.tmp"));
    EXPECT_TRUE(run.folder.Has("config/zyrexport.cfg"));
    EXPECT_THAT(ReportedRoots(run, true), ElementsAre("never"));
}

// Would catch blocks out of order, sorted by letter case, or with wrong numbers.
TEST(Run, WhatHangsOnTheModelFollowsTheSkeleton) {
    support::eSceneBuilder scene;
    scene.Settings().unitMetres = 0.01;  // the points stay in scene units
    support::eNode root = Model(scene, "Root", "tank");
    support::eNode bone = root.Child("bone").Object(eHelperObject{});
    bone.Child("p1").Property("SupportPoint").Position(12.9F, -12.9F, 0.5F);
    bone.Child("p2").Property("SupportPoint").Position(3e9F, 0, 1);
    root.Child("p0").Property("SupportPoint").Hidden();
    Box(root, "b_zone").Property("Area");
    Box(root, "C_zone").Property("Obstacle=1");
    Box(root, "A zone").Property("Obstacle");
    Box(root, "off").Property("Obstacle=0");
    Box(root, "unsure").Property("Obstacle=yes");
    Box(root, "half").Property("Obstacle=0.5");
    Box(root, "joint").Property("IKType=socket").Property("IKLimit=1,5 ").Property("IKSpeed=2 rad");
    root.Child("ground").Property("Body").Property("Land");
    support::eExportRun run(scene.Build());
    run.Do();
    const std::string text = run.Model("tank/tank.mdl");
    EXPECT_THAT(text, HasSubstr("}\n{SupportPoints\n"
                                "\t{bone \"root\"\n\t\t{point 0 0 0}\n\t}\n"
                                "\t{bone \"bone\"\n\t\t{point 12 -12 0}\n\t\t{point 2147483647 0 1}\n\t}\n"
                                "}\n{\"zones\"\n\t{obstacle \"a_zone\"\n"));
    EXPECT_LT(text.find("a_zone"), text.find("\t{area \"b_zone\"\n"));
    EXPECT_LT(text.find("b_zone"), text.find("\t{obstacle \"c_zone\"\n"));
    for (const char* off : {"\"off\"", "\"unsure\"", "\"half\""}) {
        EXPECT_THAT(text, Not(HasSubstr(off)));
    }
    EXPECT_EQ(run.Text("tank/tank.def"), "{entity\n\t{\"land_patch\"\n\t}\n}\n");
    EXPECT_THAT(
        run.Messages(),
        ElementsAre("Advice: Значение '2 rad' свойства 'IKSpeed' узла 'joint' читается как число 2.",
                    "Advice: Значение '0.5' свойства 'Obstacle' узла 'half' читается как число 0.",
                    "Advice: Значение 'yes' свойства 'Obstacle' узла 'unsure' читается как число 0.",
                    "Предупреждение: Следует убрать из модели все Body, поскольку они более не нужны."));
}

// Would catch what one model leaves behind for the next (models are exported from the last to the first), and
// two volumes under one name.
TEST(Run, AModelHoldsOnlyItsOwn) {
    support::eSceneBuilder scene;
    const auto part = [&](support::eNode root, const char* material) {
        Box(root, material).Property("Poly").Material(scene.Material(material, eStandardMaterial{}));
    };
    part(Model(scene, "boat", "boat"), "wood");
    support::eNode tank = Model(scene, "tank", "tank").Property("Land");
    part(tank, "iron");
    Box(tank, "hull_vol").Property("Volume");
    Box(tank, "Hull").Property("Volume");
    tank.Child("point").Property("SupportPoint");
    support::eExportRun run(scene.Build());
    run.Do();
    EXPECT_THAT(run.Messages(), ElementsAre("Ошибка: Повторяющееся имя объема 'hull'!"));
    EXPECT_THAT(run.Text("tank/tank.def"), HasSubstr("{\"land_patch\"\n"));
    EXPECT_EQ(run.Text("tank/tank.def").find("\"hull\""), run.Text("tank/tank.def").rfind("\"hull\""));
    EXPECT_EQ(run.Text("boat/boat.def"), "{entity\n}\n");
    EXPECT_EQ(run.Text("boat/.material"), "{simple \"wood\"\n\t{diffuse \"tex0_0\"}\n\t{blend none}\n}\n");
    EXPECT_THAT(run.Text("boat/boat.mdl"), Not(HasSubstr("SupportPoints")));
}

// Would catch a scene that writes beyond the folders that the user has named.
TEST(Run, AModelBeyondTheFenceIsRefused) {
    support::eSceneBuilder scene;
    Model(scene, "good", "good");
    Model(scene, "Thief", "..\\..\\stolen");
    Model(scene, "Far", "C:\\Game\\Tank");
    support::eExportRun run(scene.Build());
    platform::AddWriteRoot(run.folder / "game");
    platform::AddWriteRoot(run.folder / "config");
    run.Do();
    platform::ClearWriteRoots();
    ASSERT_EQ(run.messages.boxes.size(), 2U);
    EXPECT_EQ(run.messages.boxes[0].text,
              "Кость 'Far': в параметре 'Model' указан полный путь 'C:\\Game\\Tank'.\n"
              "Нужен путь от каталога ресурсов игры. Модель пропущена.");
    EXPECT_THAT(run.messages.boxes[1].text, HasSubstr("Кость 'Thief': путь '"));
    EXPECT_THAT(run.messages.boxes[1].text, HasSubstr("../../stolen'"));
    EXPECT_TRUE(run.Has("good/good.mdl"));
    EXPECT_THAT(ReportedRoots(run, true), ElementsAre("Far", "Thief"));
}

// Would catch marks or numbers of the run that stay in the artist's scene.
TEST(Run, TheSceneIsLeftAsItWas) {
    support::eSceneBuilder scene;
    support::eNode root = Model(scene, "root", "tank");
    Box(root, "bone").JointFlags(0x80);
    support::eNode group = root.Child("view").GroupHead().Property("Preview").Object(eHelperObject{});
    support::eNode aim = group.Child("aim").GroupMember().Position(0, 0, -30).Object(eTargetObject{});
    group.Child("camera").GroupMember().Object(eCameraObject{.targetDistance = 7}).Target(aim);
    support::eExportRun run(scene.Build());
    run.Do();
    const auto& camera =
        dynamic_cast<host::CameraObject&>(*run.host.GetINodeByName("camera")->EvalWorldState(0).obj);
    EXPECT_EQ(camera.EvalCameraState(0).targetDistance, 7) << "what the preview asked for is taken back";
    host::INode& bone = *run.host.GetINodeByName("bone");
    EXPECT_EQ(bone.AnimatableFlags(), 0x80U);
    bone.SetAnimatableFlags(0x40);
    run.host.theHold().Cancel();
    EXPECT_EQ(bone.AnimatableFlags(), 0x40U) << "no hold is left open";
    EXPECT_EQ(bone.GetObjectRef()->AnimatableFlags(), 0U);
    EXPECT_EQ(bone.GetRenderData(), nullptr);
}

}  // namespace
