#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "base/ansi.h"
#include "base/number_text.h"
#include "support/export_run.h"
#include "support/scene_builder.h"
#include "volume/polyhedron_image.h"

namespace {

using namespace standalone;
using host::Point3;
using support::eNode;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

const eBoxObject kBox{.width = 1, .length = 2, .height = 3};

host::Mesh Tetrahedron() {
    return support::TriangleMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                                 {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {0, 3, 2}});
}

// The block of that head and all that stands in it, up to the brace at its own depth.
std::string Block(const std::string& text, const std::string& head) {
    const std::size_t begin = text.find("{" + head);
    if (begin == std::string::npos) {
        return {};
    }
    std::size_t end = begin;
    int open = 0;
    do {
        open += text[end] == '{' ? 1 : text[end] == '}' ? -1 : 0;
    } while (++end < text.size() && open != 0);
    return text.substr(begin, end - begin);
}

// A model "m" with what a test hangs below its root; Mdl and Def give blocks of its files by their heads.
class GameplayText : public testing::Test {
protected:
    eNode Add(const char* name, std::initializer_list<const char*> properties, eObjectKind object) {
        eNode node = root.Child(name).Object(std::move(object));
        for (const char* property : properties) {
            node.Property(property);
        }
        return node;
    }
    std::string Mdl(const std::string& head) { return Block(Run().Text("m/m.mdl"), head); }
    std::string Def(const std::string& head) { return Block(Run().Text("m/m.def"), head); }
    std::vector<std::string> Messages() { return Run().Messages(); }

    support::eSceneBuilder scene;
    eNode root = scene.Node("root").Property("Model=m").Object(eHelperObject{});

private:
    support::eExportRun& Run() {
        if (!run) {
            run.emplace(scene.Build());
            run->Do();
        }
        return *run;
    }
    std::optional<support::eExportRun> run;
};

// The two blocks as the game reads them; a wrong middle of the height moves every box by half of it.
TEST_F(GameplayText, AVolumeHasABlockInBothFiles) {
    Add("hull_vol", {"Volume=engine", "bullet"}, kBox);
    EXPECT_EQ(Mdl("\"volumes\""),
              "{\"volumes\"\n\t{\"hull\"\n\t\t{box 1 2 3}\n\t\t{bone \"root\"}\n\t\t{Position 0 \t 0 \t "
              "1.5}\n\t}\n}");
    EXPECT_EQ(Def("\"volumes\""),
              "{\"volumes\"\n\t\t{\"hull\"\n\t\t\t{component \"engine\"}\n\t\t\t{able {bullet}}\n\t\t}\n\t}");
    EXPECT_THAT(Messages(), IsEmpty());
}

// Catches a scale that goes into the size of a primitive, a sphere or cylinder that stands beside its pivot,
// a volume against another bone than its parent, and one that takes the name of its bone away.
TEST_F(GameplayText, PrimitivesKeepTheirOwnSizes) {
    Add("big", {"Volume"}, kBox).Scale(2, 2, 2).Child("inside").Object(eHelperObject{});
    Add("ball", {"Component"}, eSphereObject{.radius = 2}).Position(1, 2, 3);
    eNode arm = Add("arm_dup", {}, eHelperObject{}).Position(7, 0, 0);
    arm.Child("arm_vol").Property("Volume").Object(eCylinderObject{.radius = 1, .height = 4});
    EXPECT_EQ(Mdl("\"big\""),
              "{\"big\"\n\t\t{box 1 2 3}\n\t\t{bone \"root\"}\n\t\t{matrix34\n\t\t\t2 \t 0 \t 0\n\t\t\t0 \t "
              "2 \t 0\n\t\t\t0 \t 0 \t 2\n\t\t\t0 \t 0 \t 3\n\t\t}\n\t}");
    EXPECT_THAT(Mdl("\"ball\""), HasSubstr("{sphere 2}\n\t\t{bone \"root\"}\n\t\t{Position 1 \t 2 \t 3}"));
    EXPECT_THAT(Mdl("\"arm\""), HasSubstr("{cylinder 1 4}\n\t\t{bone \"arm\"}\n\t\t{Position 0 \t 0 \t 2}"));
    EXPECT_THAT(Mdl("skeleton"), AllOf(HasSubstr("{bone \"arm\""), Not(HasSubstr("inside"))));
    EXPECT_THAT(Messages(), ElementsAre("Ошибка: Матрица для объема 'big' не ортогональна или содержит "
                                        "масштабирование!"));
}

// Catches vertices that miss the scale of their node, the offset of their object or the metres, sides that
// lose their material, and a scaled polyhedron that is told as a fault.
TEST_F(GameplayText, APolyhedronTakesTheScaleIntoItsVertices) {
    scene.Settings().unitMetres = 0.5;
    host::Mesh mesh = Tetrahedron();
    mesh.faces[0].setMatID(1);
    mesh.faces[1].setMatID(1);
    mesh.faces[2].setMatID(2);
    Add("rock", {"Volume"}, eMeshObject{mesh})
        .Scale(2, 4, 6)
        .Position(0, 0, 8)
        .Offset({.position = {1, 0, 0}});
    const std::string block = Mdl("polyhedron");
    std::string problem;
    const std::size_t text = block.find('"') + 1;
    const auto rock = ReadPolyhedron(block.substr(text, block.rfind('"') - text), problem);
    ASSERT_TRUE(rock) << problem;
    EXPECT_THAT(rock->vertices,
                ElementsAre(Point3{1, 0, 0}, Point3{2, 0, 0}, Point3{1, 2, 0}, Point3{1, 0, 3}));
    EXPECT_THAT(rock->sides, ElementsAre(2, 2, 3, 1));
    EXPECT_THAT(Mdl("\"rock\""), HasSubstr("{Position 0 \t 0 \t 4}"));
    EXPECT_THAT(Messages(), IsEmpty());
}

// Catches faults that pass silently, are told for each face, or take other volumes with them.
TEST_F(GameplayText, FaultsOfVolumesAreTold) {
    host::Mesh dented = support::GridMesh(2, 2);
    dented.verts[4].z = -0.5F;
    host::Mesh large = Tetrahedron();
    large.verts.resize(65537);
    Add("dent", {"Volume"}, eMeshObject{dented});
    Add("left", {"Volume"}, eMeshObject{Tetrahedron()}).Scale(-1, 1, 1);
    Add("large", {"Volume", "bullet"}, eMeshObject{large});
    Add("hollow", {"Volume"}, eMeshObject{host::Mesh()});
    Add("empty", {"Volume"}, eHelperObject{});
    Add("LEFT_vol", {"Volume"}, kBox);
    EXPECT_THAT(Mdl("\"dent\""), HasSubstr("{polyhedron \"45564c4d"));
    EXPECT_EQ(Mdl("\"large\""), "{\"large\"\n\t}");
    EXPECT_EQ(Def("\"large\""), "{\"large\"\n\t\t}");
    EXPECT_EQ(Mdl("\"empty\""), "{\"empty\"\n\t}");
    EXPECT_THAT(Mdl("\"hollow\""), HasSubstr("{polyhedron \"45564c4d5645525400000000"));
    EXPECT_THAT(
        Messages(),
        UnorderedElementsAre("Ошибка: Полигональный объем 'dent' невыпуклый!",
                             "Ошибка: Матрица для объема 'left' содержит зеркальное масштабирование!",
                             "Ошибка: Полигональный объем 'large' содержит более 65536 вершин и не записан.\n"
                             "Необходимо упростить его.",
                             "Ошибка: Полигональный объем 'hollow' не содержит ни одного полигона!",
                             "Ошибка: Невозможно преобразовать мэш 'empty' в набор треугольников!",
                             "Ошибка: Повторяющееся имя объема 'left'!"));
}

// Catches a tag that is lost, in another order or in the other file, and texts that do not read back.
TEST_F(GameplayText, TagsOfVolumesGoToTheDefinition) {
    const eSphereObject ball{.radius = 1};
    Add("a", {"Volume", "Thickness=0,5", "Tags=x,y"}, ball);
    Add("b", {"Volume", "contact=2", "bullet", "Clear", "obstacle=0"}, ball);
    Add("c", {"Volume=\xF6\xE5\xEF\xFC", "Thickness=1 2", "obstacle=1", "blast={1"}, ball);
    Add("d", {"Volume", "obstacle", "Tags=\"q\" \\,\xF6\xE5\xEF\xFC"}, ball);
    EXPECT_EQ(Def("\"a\""), "{\"a\"\n\t\t\t{tags \"x\" \"y\"}\n\t\t\t{thickness 0 5}\n\t\t}");
    EXPECT_EQ(Def("\"b\""), "{\"b\"\n\t\t\t{able clear {bullet}{contact 2}{obstacle 0}}\n\t\t}");
    EXPECT_THAT(Def("\"c\""), HasSubstr("{\"c\"\n\t\t\t{thickness 1 2}\n\t\t\t{able {blast}}"));
    EXPECT_THAT(
        Messages(),
        ElementsAre("Advice: Значение 'цепь' свойства 'Volume' узла 'c' содержит недопустимые символы.",
                    HasSubstr("Ошибка: Значение '{1' свойства 'blast' узла 'c' не записано")));
    EXPECT_THAT(Mdl("\"zones\""), HasSubstr("\t{obstacle \"d\"\n\t\t{circle2"));
    EXPECT_EQ(Def("\"d\""), "{\"d\"\n\t\t\t{tags \"\\\"q\\\" \\\\\" \"\xF6\xE5\xEF\xFC\"}\n\t\t}");
}

// The worked text of a zone: fitted box, the mark of meshes, and the tags in their order.
TEST_F(GameplayText, AMeshZoneIsAFittedBox) {
    const eBoxObject wall{.width = 4, .length = 1, .height = 2};
    Add("wall", {"Obstacle", "Static", "Tags=a,b"}, wall).Position(0, -1, 0);
    Add("gate", {"Area", "Permit", "Proper=x", "Move", "Rotate"}, wall).Rotation({0, 0, 1}, 45);
    EXPECT_THAT(Mdl("\"zones\""),
                HasSubstr("\n\t{obstacle \"wall\"\n\t\t{obb2\n\t\t\t{center 0 1}\n\t\t\t{extent 2 "
                          "0.5}\n\t\t\t{axis 1 0}\n\t\t}\n\t\t{rotate}\n\t\t{tags \"a\" "
                          "\"b\"}\n\t\t{static}\n\t}\n"));
    // A direction near the diagonal is a little beside it, so that the box is a little too large.
    EXPECT_THAT(Mdl("area \"gate\""),
                HasSubstr("{extent 0.500796 2.0002}\n\t\t\t{axis 0.707388 0.706825}\n\t\t}\n\t\t{rotate}\n"
                          "\t\t{proper \"x\"}\n\t\t{permit \"\"}\n\t\t{rotate}\n\t\t{move}\n\t}"));
}

// Catches figures in scene units or in the world, scales that are lost or counted twice, and polygons that
// keep the sense in which they were drawn; below a root that is turned and scaled the figures stay the same.
TEST_F(GameplayText, ShapesStandInMetresOfTheModel) {
    scene.Settings().unitMetres = 0.01;
    root.Rotation({0, 0, 1}, 90).Scale(2, 2, 2).Position(300, 0, 0);
    const std::vector<Point3> triangle{{0, 0, 0}, {100, 0, 0}, {0, 100, 0}};
    Add("rect", {"Area"}, eRectangleObject{.width = 400, .length = 200});
    Add("ring", {"Area"}, eCircleObject{.radius = 150}).Position(100, 0, 0);
    Add("ball", {"Area"}, eSphereObject{.radius = 100}).Scale(2, 2, 2);
    Add("slab", {"Area"}, eBoxObject{.width = 400, .length = 100, .height = 1})
        .Position(0, 50, 0)
        .Offset({.position = {50, 0, 0}});
    Add("ccw", {"Area"}, eLineObject{{{triangle, true}}});
    Add("cw", {"Area"}, eLineObject{{{{triangle[0], triangle[2], triangle[1]}, true}}});
    EXPECT_EQ(
        Mdl("area \"rect\""),
        "{area \"rect\"\n\t\t{obb2\n\t\t\t{center 0 0}\n\t\t\t{extent 4 2}\n\t\t\t{axis -1 0}\n\t\t}\n\t}");
    EXPECT_EQ(Mdl("area \"ring\""),
              "{area \"ring\"\n\t\t{circle2\n\t\t\t{radius 3}\n\t\t\t{center 2 0}\n\t\t}\n\t}");
    EXPECT_EQ(Mdl("area \"ball\""),
              "{area \"ball\"\n\t\t{circle2 {radius 4}\n\t\t\t{center 0 0}\n\t\t}\n\t\t{rotate}\n\t}");
    EXPECT_THAT(Mdl("area \"slab\""), HasSubstr("{center 1 -1}\n\t\t\t{extent 4 1}\n\t\t\t{axis 1 0}"));
    EXPECT_THAT(Mdl("area \"ccw\""), HasSubstr("{vertex 0 -2}\n\t\t\t{vertex 2 0}\n\t\t\t{vertex 0 0}"));
    EXPECT_THAT(Mdl("area \"cw\""), HasSubstr("{vertex 0 0}\n\t\t\t{vertex 0 -2}\n\t\t\t{vertex 2 0}"));
    EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(GameplayText, ShapesThatAreNoPolygonAreTold) {
    const eSpline line{{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, true};
    Add("two", {"Area", "Move"}, eLineObject{{line, line}});
    Add("short", {"Area"}, eLineObject{{{{{0, 0, 0}, {1, 0, 0}}, false}}});
    Add("none", {"Area"}, eLineObject{});
    Add("off", {"Obstacle=0"}, kBox);
    EXPECT_EQ(
        Mdl("\"zones\""),
        "{\"zones\"\n\t{area \"none\"\n\t}\n\t{area \"short\"\n\t}\n\t{area \"two\"\n\t\t{move}\n\t}\n}");
    EXPECT_THAT(Messages(), UnorderedElementsAre(
                                "Ошибка: 'two': полигональная зона должна содержать только один полигон!",
                                "Ошибка: 'short': полигональная зона должна содержать не менее трех точек!"));
}

// Catches a roll of no account that is written, one that is lost or has a sign by chance, and a camera that
// looks straight up and is told to lie on its side. The mirror of the engine's space turns the sign round.
TEST_F(GameplayText, ACameraTellsItsRoll) {
    constexpr float kDegree = 0.01745329F;
    std::vector<float> horizons;
    // The camera's own axes before it is rolled by the degrees.
    const auto look = [&](const Point3& right, const Point3& up, float degrees, float horizon) {
        const float s = std::sin(degrees * kDegree), c = std::cos(degrees * kDegree);
        const Point3 x = right * c + up * s, y = up * c - right * s;
        const std::string name = "v" + std::to_string(horizons.size());
        eNode group = Add(name.c_str(), {"Preview"}, eHelperObject{}).GroupHead();
        eNode camera = group.Child("cam").GroupMember().Object(eCameraObject{});
        camera.Matrix({x, y, host::CrossProd(x, y), {1, 2, 3}});
        horizons.push_back(horizon);
    };
    look({1, 0, 0}, {0, 1, 0}, -30, 30);
    look({1, 0, 0}, {0, -1, 0}, 0, 0);
    look({1, 0, 0}, {0, -1, 0}, 30, -30);
    for (int degrees = 3; degrees < 360; degrees += 7) {
        const float heading = static_cast<float>(degrees) * kDegree;
        const Point3 right{std::cos(heading), std::sin(heading), 0};
        look(right, {0, 0, 1}, 0, 0);
        look(right, {0, 0, 1}, 0.001F, -0.001F);
        look(right, {0, 0, 1}, 180, 180);
    }
    for (std::size_t i = 0; i < horizons.size(); ++i) {
        const std::string block = Mdl("\"v" + std::to_string(i) + "\"");
        const std::size_t entry = block.find("{horizon ");
        EXPECT_EQ(entry != std::string::npos, horizons[i] != 0) << block;
        EXPECT_NEAR(entry == std::string::npos ? 0 : ReadReal(block.substr(entry + 9)), horizons[i], 1e-4);
    }
}

// Catches a preview in scene units, in the world, or that is not mirrored as the model is.
TEST_F(GameplayText, APreviewHasTheCameraAndTheLightsOfItsGroup) {
    scene.Settings().unitMetres = 0.5;
    root.Position(3, 4, 0);
    scene.Settings().ambient = {0.2F, 0.2F, 0.2F};
    eNode group = Add("view", {"Preview"}, eHelperObject{}).GroupHead();
    const auto member = [&](const char* name) { return group.Child(name).GroupMember(); };
    member("lamp").Position(0, 0, 2).Object(eLightObject{.attenuation = eAttenuation{1, 7}});
    member("cam").Position(0, 2, 5).Object(eCameraObject{.fov = 45});
    member("cam2").Object(eCameraObject{});
    member("sun").Object(eLightObject{.kind = eLightKind::Directional, .color = {1, 0, 0}});
    member("sun2").Object(eLightObject{.kind = eLightKind::Directional});
    member("dark").Object(eLightObject{.kind = eLightKind::Spot, .hotspot = 20, .falloff = 0});
    group.Child("stranger").Object(eLightObject{});
    Add("loose", {"Preview"}, eHelperObject{});
    EXPECT_EQ(
        Mdl("\"preview\""),
        "{\"preview\"\n\t{\"view\"\n\t\t{camera\n\t\t\t{origin 0 \t -1 \t 2.5}\n\t\t\t{lookat 0 \t 0 \t "
        "0}\n\t\t\t{fov 45}\n\t\t}\n\t\t{lights\n\t\t\t{\"0\"\n\t\t\t\t{type point}\n\t\t\t\t{position "
        "0 \t 0 \t 1}\n\t\t\t\t{range 7}\n\t\t\t}\n\t\t\t{\"1\"\n\t\t\t\t{type "
        "directional}\n\t\t\t\t{direction 0 \t 0 \t -0.5}\n\t\t\t\t{ambient "
        "-13421773}\n\t\t\t\t{diffuse -65536}\n\t\t\t}\n\t\t\t{\"2\"\n\t\t\t\t{type "
        "directional}\n\t\t\t\t{direction 0 \t 0 \t -0.5}\n\t\t\t}\n\t\t\t{\"3\"\n\t\t\t\t{type "
        "spot}\n\t\t\t\t{position 0 \t 0 \t 0}\n\t\t\t\t{direction 0 \t 0 \t -0.5}\n\t\t\t\t{angle "
        "20}\n\t\t\t\t{angle0 0}\n\t\t\t}\n\t\t}\n\t}\n}");
    EXPECT_THAT(Messages(),
                ElementsAre("Ошибка: Просмотровая группа \"view\" может содержать только одну камеру",
                            "Advice: Конус просмотрового источника света \"dark\" "
                            "равен нулю.",
                            "Ошибка: Просмотровая кость \"loose\" должна быть группой"));
}

}  // namespace
