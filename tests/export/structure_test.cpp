#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/ansi.h"
#include "mesh/file/mesh_reader.h"
#include "support/export_run.h"
#include "support/scene_builder.h"

namespace {

using namespace standalone;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

support::eNode Model(support::eSceneBuilder& scene, const char* name, const std::string& path) {
    return scene.Node(name).Property("Model=" + path).Object(eHelperObject{});
}

support::eNode Nested(support::eNode parent, const char* name, const std::string& path) {
    return parent.Child(name).Property("Model=" + path).Object(eHelperObject{});
}

support::eNode Mesh(support::eNode parent, const char* name) {
    return parent.Child(name).Property("Poly").Object(eBoxObject{1, 1, 1});
}

std::vector<std::string> ExportedRoots(const support::eExportRun& run) {
    std::vector<std::string> roots;
    for (const eModelReport& report : run.exporter.modelReports) {
        if (!report.skipped) {
            roots.push_back(report.root);
        }
    }
    return roots;
}

// A ship with a hull of its own and two guns that share one barrel.
support::eSceneBuilder Ship(bool brokenStructure) {
    support::eSceneBuilder scene;
    support::eNode ship = Model(scene, "ship", "ship").Property("Structure").Property("Hold=cargo");
    Mesh(ship, "hull");
    if (brokenStructure) {
        Mesh(ship, "Hull");
    }
    support::eNode front = Nested(ship, "front", "ship/front");
    support::eNode barrel = Mesh(front, "barrel_f");
    Mesh(front, "shield");
    Nested(ship, "rear", "ship/Rear.v1").Child("barrel_r").Property("Poly").SameObject(barrel);
    return scene;
}

// Would catch another order, views that look in the wrong folder, and a definition without its places.
TEST(Structure, NestedModelsFollowAndShareTheCommonFolder) {
    support::eExportRun run(Ship(false).Build());
    run.Do();
    EXPECT_THAT(run.Messages(), IsEmpty());
    EXPECT_THAT(ExportedRoots(run), ElementsAre("ship", "rear", "front"));
    EXPECT_EQ(run.Text("ship/ship.def"),
              "{entity\n"
              "\t{\"placer\"}\n"
              "\t{\"structure\"\n"
              "\t\t{place \"ship\" \"front\"}\n"
              "\t\t{place \"ship\" \"rear\"}\n"
              "\t\t{structure_bone\n\t\t\t{hold \"cargo\"}\n\t\t}\n"
              "\t}\n"
              "}\n");
    EXPECT_THAT(run.Model("ship/ship.mdl"), HasSubstr("{view poly \"common/hull\"}"));
    EXPECT_THAT(run.Model("ship/ship.mdl"), Not(HasSubstr("barrel")));
    EXPECT_THAT(run.Model("ship/front/front.mdl"), HasSubstr("{view poly \"../common/barrel_f\"}"));
    EXPECT_THAT(run.Model("ship/front/front.mdl"), HasSubstr("{view poly \"shield\"}"));
    EXPECT_THAT(run.Model("ship/rear.v1/rear.mdl"), HasSubstr("{view poly \"../common/barrel_f\"}"));
    EXPECT_TRUE(run.Has("ship/common"));
    EXPECT_EQ(run.exporter.modelReports[0].meshes, 1);
    EXPECT_EQ(run.exporter.modelReports[2].meshes, 2);
}

// Would catch meshes that land in a common folder which nobody has settled.
TEST(Structure, WithoutItsStructureANestedModelStandsAlone) {
    support::eExportRun run(Ship(true).Build());
    run.Do();
    EXPECT_THAT(run.Messages(), ElementsAre("Ошибка: Найдено повторяющееся имя кости: hull!"));
    EXPECT_THAT(ExportedRoots(run), ElementsAre("rear", "front"));
    EXPECT_THAT(run.Model("ship/front/front.mdl"), HasSubstr("{view poly \"barrel_f\"}"));
    EXPECT_THAT(run.Model("ship/rear.v1/rear.mdl"), HasSubstr("{view poly \"barrel_r\"}"));
    EXPECT_FALSE(run.Has("ship/common") || run.Has("ship/ship.mdl"));
}

// Would catch a mesh that is never found because another model's took its name in the common folder.
TEST(Structure, TwoMeshesOfOneNameInTheCommonFolderAreTold) {
    support::eSceneBuilder clash;
    support::eNode ship = Model(clash, "ship", "ship").Property("Structure");
    for (const char* part : {"front", "rear"}) {
        support::eNode barrel = Mesh(Nested(ship, part, "ship/" + std::string(part)), "barrel");
        barrel.Child(std::string("spare_") + part).Property("Poly").SameObject(barrel);
    }
    support::eExportRun run(clash.Build());
    run.Do();
    EXPECT_THAT(
        run.Messages(),
        ElementsAre("Ошибка: Мэши кости 'barrel' модели 'rear' и кости 'barrel' модели 'front' попали "
                    "в общую папку под одним именем 'barrel', и вместо второго будет показан первый.\n"
                    "Необходимо переименовать одну из костей."));
}

std::vector<std::string> MeshesIn(const support::eExportRun& run, const std::string& folder) {
    const std::string bytes = run.Read(folder + "/.mesh");
    std::string problem;
    const auto content =
        ReadMeshFile({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, problem);
    std::vector<std::string> names;
    for (const eFileMesh& mesh : content.value_or(eMeshFileContent{}).meshes) {
        names.push_back(mesh.name);
    }
    return names;
}

// A fort with a tower that is a Structure too, between two plain models; stone and hand are shared objects.
// Behind the fort stands a tank.
support::eSceneBuilder Fort(bool brokenTower) {
    support::eSceneBuilder scene;
    support::eNode tank = Model(scene, "tank", "tank");
    support::eNode left = Mesh(tank, "left");
    tank.Child("right").Property("Poly").SameObject(left);
    support::eNode fort = Model(scene, "fort", "fort").Property("Structure");
    Mesh(fort, "wall");
    support::eNode stone = Mesh(Nested(fort, "gate", "fort/gate"), "stone_g");
    support::eNode tower = Nested(fort, "tower", "fort/tower").Property("Structure");
    Mesh(tower, "roof");
    if (brokenTower) {
        Mesh(tower, "Roof");
    }
    support::eNode clock = Nested(tower, "clock", "fort/tower/clock");
    clock.Child("stone_c").Property("Poly").SameObject(stone);
    support::eNode hand = Mesh(clock, "hand_c");
    support::eNode bell = Nested(tower, "bell", "fort/tower/bell").Child("hand_b").Property("Poly");
    bell.SameObject(hand).Material(scene.Material("brass", eStandardMaterial{}));
    support::eNode yard = Nested(fort, "yard", "fort/yard");
    yard.Child("stone_y").Property("Poly").SameObject(stone);
    return scene;
}

// Would catch a Structure within another one that closes the outer set, so that the models beside it show
// meshes of no file; its own models left out; and a model behind both that goes on filling their folder.
TEST(Structure, AStructureWithinAnotherHasAFolderOfItsOwn) {
    support::eExportRun run(Fort(false).Build());
    run.Do();
    EXPECT_THAT(run.Messages(), IsEmpty());
    EXPECT_THAT(ExportedRoots(run), ElementsAre("fort", "yard", "tower", "bell", "clock", "gate", "tank"));
    EXPECT_THAT(MeshesIn(run, "fort/common"), ElementsAre("wall", "stone_g"));
    EXPECT_THAT(run.Model("fort/yard/yard.mdl"), HasSubstr("{view poly \"../common/stone_g\"}"));
    EXPECT_THAT(run.Model("fort/gate/gate.mdl"), HasSubstr("{view poly \"../common/stone_g\"}"));
    EXPECT_THAT(run.Text("fort/tower/tower.def"), HasSubstr("{place \"tower\" \"clock\"}"));
    EXPECT_THAT(MeshesIn(run, "fort/tower/common"), ElementsAre("roof", "hand_c"));
    EXPECT_THAT(run.Model("fort/tower/bell/bell.mdl"), HasSubstr("{view poly \"../common/hand_c\"}"));
    EXPECT_THAT(MeshesIn(run, "fort/tower/clock"), ElementsAre("stone_c"));
    EXPECT_THAT(run.Model("tank/tank.mdl"), HasSubstr("{bone \"right\"\n\t\t\t{view poly \"left\"}"));
    EXPECT_FALSE(run.Has("tank/common"));

    support::eExportRun broken(Fort(true).Build());
    broken.Do();
    EXPECT_THAT(broken.Messages(), ElementsAre("Ошибка: Найдено повторяющееся имя кости: roof!"));
    EXPECT_THAT(MeshesIn(broken, "fort/common"), ElementsAre("wall", "stone_g"));
    EXPECT_THAT(MeshesIn(broken, "fort/tower/bell"), ElementsAre("hand_b"));
    EXPECT_THAT(broken.Text("fort/tower/bell/.material"), HasSubstr("\"brass\""));
    EXPECT_THAT(broken.Model("fort/tower/clock/clock.mdl"), HasSubstr("{view poly \"hand_c\"}"));
}

// Would catch a view that the game finds no mesh for, and a wrong or missing reason.
TEST(MissingMeshes, ViewsOfMeshesThatNobodyWritesAreTold) {
    struct eCase {
        std::function<void(support::eNode&)> spoil;
        const char* reason;
    };
    const std::vector<eCase> cases = {
        {[](support::eNode& first) { first.Property("Poly").Hidden(); }, "кость 'first' скрыта"},
        {[](support::eNode&) {}, "у нее нет параметра 'Poly'"},
        {[](support::eNode& first) { first.Property("Poly").NotRenderable(); },
         "она исключена из визуализации"},
        {[](support::eNode& first) { first.Property("Volume"); }, "она не является отдельной костью"},
        {[](support::eNode& first) { first.Property("Poly").Property("Mesh=other"); },
         "она сама показывает мэш другой кости"},
    };
    for (const eCase& spoiled : cases) {
        support::eSceneBuilder scene;
        support::eNode root = Model(scene, "root", "tank");
        support::eNode first = root.Child("first").Object(eBoxObject{1, 1, 1});
        spoiled.spoil(first);
        root.Child("second").Property("Poly").SameObject(first);
        Mesh(root, "other");
        support::eExportRun run(scene.Build());
        run.Do();
        EXPECT_THAT(run.Messages(),
                    ElementsAre(std::string("Ошибка: Кость 'second' показывает мэш кости 'first', "
                                            "но этот мэш не записан: ") +
                                spoiled.reason + "."));
        EXPECT_THAT(run.Model("tank/tank.mdl"), HasSubstr("{view poly \"first\""));
    }
}

// Would catch geometry that vanishes into a mesh which is never written, and a wrong reason.
TEST(MissingMeshes, PartsOfMeshesThatNobodyWritesAreTold) {
    struct eCase {
        std::function<void(support::eNode& arm, const support::eNode& hull)> spoil;
        const char* reason;
    };
    const std::vector<eCase> cases = {
        {[](auto&, auto&) {}, "у нее нет параметра 'Poly'"},
        {[](auto& arm, auto&) { arm.Property("CommonMesh=hull"); },
         "она сама входит в общий мэш другой кости"},
        {[](auto& arm, auto& hull) { arm.Property("Poly").SameObject(hull); },
         "она сама показывает мэш другой кости"},
        {[](auto& arm, auto&) { arm.Property("Poly").Object(eCircleObject{1}); }, "она состоит из линий"},
    };
    for (const eCase& spoiled : cases) {
        support::eSceneBuilder scene;
        support::eNode hull = Mesh(Model(scene, "root", "tank"), "hull");
        support::eNode arm = hull.Child("arm").Position(5, 0, 0).Object(eBoxObject{1, 1, 1});
        spoiled.spoil(arm, hull);
        arm.Child("badge").Property("CommonMesh=arm").Object(eBoxObject{1, 1, 1});
        support::eExportRun run(scene.Build());
        run.Do();
        EXPECT_THAT(
            run.Messages(),
            ElementsAre(std::string("Ошибка: Мэш 'badge' не попал в общий мэш кости 'arm', потому что "
                                    "тот не записан: ") +
                        spoiled.reason + "."));
    }
}

// Would catch a mesh that stays in one model's folder while another looks for it in the common one.
TEST(MissingMeshes, AMeshOfAnotherFolderIsTold) {
    support::eSceneBuilder scene;
    support::eNode ship = Model(scene, "ship", "ship").Property("Structure");
    Mesh(Nested(ship, "front", "front"), "barrel");
    Mesh(Nested(ship, "rear", "rear"), "copy").Property("Mesh=barrel");
    support::eExportRun run(scene.Build());
    run.Do();
    EXPECT_THAT(run.Messages(),
                ElementsAre("Ошибка: Кость 'copy' показывает мэш кости 'barrel', но этот мэш не "
                            "записан: он записан в папку своей модели, а не в общую."));
}

}  // namespace
