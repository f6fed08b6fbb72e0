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
using testing::IsEmpty;
using testing::Not;

eNode Root(eSceneBuilder& scene) {
    return scene.Node("root").Property("Model=m").Object(standalone::eHelperObject{});
}

// The block of that head and all that stands in it, up to the brace at its own depth.
std::string Block(const std::string& text, const std::string& head) {
    const std::size_t begin = text.find("{" + head);
    if (begin == std::string::npos) {
        return {};
    }
    std::size_t end = begin;
    for (int open = 0; end < text.size();) {
        open += text[end] == '{' ? 1 : text[end] == '}' ? -1 : 0;
        ++end;
        if (open == 0) {
            break;
        }
    }
    return text.substr(begin, end - begin);
}

// The two blocks as the game reads them; a wrong middle of the height moves every box by half of it.
TEST(Volumes, WritesTheToldBlocks) {
    eSceneBuilder scene;
    Root(scene)
        .Child("hull_vol")
        .Property("Volume=engine")
        .Property("bullet")
        .Object(standalone::eBoxObject{.width = 1, .length = 2, .height = 3});
    eExportRun run(scene.Build());
    run.Do();
    EXPECT_EQ(Block(run.Text("m/m.mdl"), "\"volumes\""),
              "{\"volumes\"\n\t{\"hull\"\n\t\t{box 1 2 3}\n\t\t{bone \"root\"}\n\t\t{Position 0 \t 0 \t "
              "1.5}\n\t}\n}");
    EXPECT_EQ(Block(run.Text("m/m.def"), "\"volumes\""),
              "{\"volumes\"\n\t\t{\"hull\"\n\t\t\t{component \"engine\"}\n\t\t\t{able {bullet}}\n\t\t}\n\t}");
    EXPECT_THAT(run.Messages(), IsEmpty());
}

TEST(Volumes, TellsScaledMirroredAndHollowSolids) {
    eSceneBuilder scene;
    eNode root = Root(scene);
    root.Child("big").Property("Volume").Scale(2, 2, 2).Object(
        standalone::eBoxObject{.width = 1, .length = 2, .height = 3});
    root.Child("ball").Property("Component").Position(1, 2, 3).Object(standalone::eSphereObject{.radius = 2});
    root.Child("left").Property("Volume").Scale(-1, 1, 1).Object(
        standalone::eMeshObject{support::TriangleMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                                                      {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {0, 3, 2}})});
    root.Child("empty").Property("Volume").Object(standalone::eHelperObject{});
    root.Child("BIG_vol").Property("Volume").Object(standalone::eSphereObject{.radius = 1});
    eExportRun run(scene.Build());
    run.Do();
    const std::string volumes = Block(run.Text("m/m.mdl"), "\"volumes\"");
    EXPECT_THAT(volumes, HasSubstr("{box 1 2 3}"));
    EXPECT_THAT(volumes, HasSubstr("{sphere 2}\n\t\t{bone \"root\"}\n\t\t{Position 1 \t 2 \t 3}"));
    EXPECT_THAT(volumes, HasSubstr("{\"empty\"\n\t}"));
    EXPECT_THAT(volumes, HasSubstr("{polyhedron \"45564c4d"));
    EXPECT_THAT(run.Messages(),
                testing::UnorderedElementsAre(
                    "Ошибка: Матрица для объема 'big' не ортогональна или содержит масштабирование!",
                    "Ошибка: Невозможно преобразовать мэш 'empty' в набор треугольников!",
                    "Ошибка: Матрица для объема 'left' содержит зеркальное масштабирование!",
                    "Ошибка: Повторяющееся имя объема 'big'!"));
}

TEST(Volumes, WritesTheTagsOfTheTable) {
    eSceneBuilder scene;
    eNode root = Root(scene);
    const auto volume = [&](const char* name, std::initializer_list<const char*> lines) {
        eNode node = root.Child(name).Property("Volume").Object(standalone::eSphereObject{.radius = 1});
        for (const char* line : lines) {
            node.Property(line);
        }
    };
    volume("a", {"Thickness=0,5", "Tags=x,y"});
    volume("b", {"contact=2", "bullet", "Clear", "obstacle=0"});
    volume("c", {"obstacle=1"});
    eExportRun run(scene.Build());
    run.Do();
    const std::string def = run.Text("m/m.def");
    EXPECT_EQ(Block(def, "\"a\""), "{\"a\"\n\t\t\t{tags \"x\" \"y\"}\n\t\t\t{thickness 0 5}\n\t\t}");
    EXPECT_EQ(Block(def, "\"b\""), "{\"b\"\n\t\t\t{able clear {bullet}{contact 2}{obstacle 0}}\n\t\t}");
    EXPECT_EQ(Block(def, "\"c\""), "{\"c\"\n\t\t}");
}

// The worked text of a zone: fitted box, the mark of meshes, and the tags in their order.
TEST(Zones, WritesAFittedBoxWithTags) {
    eSceneBuilder scene;
    Root(scene)
        .Child("wall")
        .Property("Obstacle")
        .Property("Static")
        .Property("Tags=a,b")
        .Position(0, -1, 0)
        .Object(standalone::eBoxObject{.width = 4, .length = 1, .height = 2});
    eExportRun run(scene.Build());
    run.Do();
    EXPECT_EQ(Block(run.Text("m/m.mdl"), "\"zones\""),
              "{\"zones\"\n\t{obstacle \"wall\"\n\t\t{obb2\n\t\t\t{center 0 1}\n\t\t\t{extent 2 "
              "0.5}\n\t\t\t{axis 1 "
              "0}\n\t\t}\n\t\t{rotate}\n\t\t{tags \"a\" \"b\"}\n\t\t{static}\n\t}\n}");
}

TEST(Zones, WritesShapesInMetresOfTheModel) {
    eSceneBuilder scene;
    scene.Settings().unitMetres = 0.01;
    eNode root = Root(scene);
    root.Child("rect").Property("Area").Object(standalone::eRectangleObject{.width = 400, .length = 200});
    root.Child("ring").Property("Area").Position(100, 0, 0).Object(standalone::eCircleObject{.radius = 150});
    root.Child("ball").Property("Area").Scale(2, 2, 2).Object(standalone::eSphereObject{.radius = 100});
    const std::vector<host::Point3> triangle{{0, 0, 0}, {100, 0, 0}, {0, 100, 0}};
    root.Child("ccw").Property("Area").Object(standalone::eLineObject{{{triangle, true}}});
    root.Child("cw").Property("Area").Object(
        standalone::eLineObject{{{{triangle[0], triangle[2], triangle[1]}, true}}});
    eExportRun run(scene.Build());
    run.Do();
    const std::string mdl = run.Text("m/m.mdl");
    EXPECT_THAT(Block(mdl, "area \"rect\""),
                HasSubstr("{center 0 0}\n\t\t\t{extent 2 1}\n\t\t\t{axis -1 0}"));
    EXPECT_THAT(Block(mdl, "area \"ring\""), HasSubstr("{radius 1.5}\n\t\t\t{center 1 0}"));
    EXPECT_THAT(Block(mdl, "area \"ball\""), HasSubstr("{radius 2}"));
    EXPECT_THAT(Block(mdl, "area \"ring\""), Not(HasSubstr("rotate")));
    // Both come out walked in one sense, however they were drawn.
    EXPECT_THAT(Block(mdl, "area \"ccw\""),
                HasSubstr("{vertex 0 -1}\n\t\t\t{vertex 1 0}\n\t\t\t{vertex 0 0}"));
    EXPECT_THAT(Block(mdl, "area \"cw\""),
                HasSubstr("{vertex 0 0}\n\t\t\t{vertex 0 -1}\n\t\t\t{vertex 1 0}"));
}

TEST(Zones, TellsShapesThatAreNoPolygon) {
    eSceneBuilder scene;
    eNode root = Root(scene);
    const standalone::eSpline line{{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, true};
    root.Child("two").Property("Area").Property("Move").Object(standalone::eLineObject{{line, line}});
    root.Child("short").Property("Area").Object(standalone::eLineObject{{{{{0, 0, 0}, {1, 0, 0}}, false}}});
    root.Child("none").Property("Area").Object(standalone::eLineObject{});
    root.Child("off")
        .Property("Obstacle=0")
        .Object(standalone::eBoxObject{.width = 1, .length = 1, .height = 1});
    eExportRun run(scene.Build());
    run.Do();
    const std::string zones = Block(run.Text("m/m.mdl"), "\"zones\"");
    EXPECT_THAT(zones, HasSubstr("{area \"two\"\n\t\t{move}\n\t}"));
    EXPECT_THAT(zones, Not(HasSubstr("polygon2")));
    EXPECT_THAT(zones, Not(HasSubstr("off")));
    EXPECT_THAT(run.Messages(),
                testing::UnorderedElementsAre(
                    "Ошибка: 'two': полигональная зона должна содержать только один полигон!",
                    "Ошибка: 'short': полигональная зона должна содержать не менее трех точек!"));
}

// Points are cut towards zero and stay in scene units, without mirror and master scale.
TEST(SupportPoints, StandInTheSpaceOfTheirBone) {
    eSceneBuilder scene;
    scene.Settings().unitMetres = 0.01;
    eNode seat = Root(scene).Child("seat").Position(5, 5, 5).Object(standalone::eHelperObject{});
    seat.Child("p1").Property("SupportPoint").Position(12.9F, -12.9F, 0.5F);
    seat.Child("p2").Property("SupportPoint").Position(1, 2, 3).Hidden();
    seat.Property("Land");
    eExportRun run(scene.Build());
    run.Do();
    EXPECT_EQ(Block(run.Text("m/m.mdl"), "SupportPoints"),
              "{SupportPoints\n\t{bone \"seat\"\n\t\t{point 12 -12 0}\n\t\t{point 1 2 3}\n\t}\n}");
    EXPECT_THAT(run.Text("m/m.def"), HasSubstr("\t{\"land_patch\"\n\t}\n"));
}

TEST(Preview, WritesCameraAndLightsOfAGroup) {
    eSceneBuilder scene;
    scene.Settings().ambient = {0.2F, 0.2F, 0.2F};
    eNode root = Root(scene);
    eNode group = root.Child("view").Property("Preview").GroupHead().Object(standalone::eHelperObject{});
    const auto member = [&](const char* name) { return group.Child(name).GroupMember(); };
    member("lamp").Position(0, 0, 2).Object(
        standalone::eLightObject{.attenuation = standalone::eAttenuation{1, 7}});
    member("cam").Position(0, 0, 5).Object(standalone::eCameraObject{.fov = 45});
    member("cam2").Object(standalone::eCameraObject{});
    member("sun").Object(
        standalone::eLightObject{.kind = standalone::eLightKind::Directional, .color = {1, 0, 0}});
    member("sun2").Object(standalone::eLightObject{.kind = standalone::eLightKind::Directional});
    root.Child("loose").Property("Preview").Object(standalone::eHelperObject{});
    eExportRun run(scene.Build());
    run.Do();
    EXPECT_EQ(
        Block(run.Text("m/m.mdl"), "\"preview\""),
        "{\"preview\"\n\t{\"view\"\n\t\t{camera\n\t\t\t{origin 0 \t 0 \t 5}\n\t\t\t{lookat 0 \t 0 \t "
        "0}\n\t\t\t{fov 45}\n\t\t}\n\t\t{lights\n\t\t\t{\"0\"\n\t\t\t\t{type point}\n\t\t\t\t{position 0 \t "
        "0 "
        "\t 2}\n\t\t\t\t{range 7}\n\t\t\t}\n\t\t\t{\"1\"\n\t\t\t\t{type directional}\n\t\t\t\t{direction 0 "
        "\t 0 "
        "\t -1}\n\t\t\t\t{ambient -13421773}\n\t\t\t\t{diffuse -65536}\n\t\t\t}\n\t\t\t{\"2\"\n\t\t\t\t{type "
        "directional}\n\t\t\t\t{direction 0 \t 0 \t -1}\n\t\t\t}\n\t\t}\n\t}\n}");
    EXPECT_THAT(run.Messages(),
                ElementsAre("Ошибка: Просмотровая группа \"view\" может содержать только одну камеру",
                            "Ошибка: Просмотровая кость \"loose\" должна быть группой"));
}

}  // namespace
