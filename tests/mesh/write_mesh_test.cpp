#include "mesh/write_mesh.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <set>

#include "geometry/vertex_layout.h"
#include "io/streams/stream_memory.h"
#include "mesh/build/mesh_assembly.h"
#include "mesh/build/weld.h"
#include "mesh/mesh_run.h"
#include "mesh/strips/mesh_order.h"

namespace {

using namespace mesh_test;
using namespace standalone;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Catches a colour channel that is dropped for a part of a mesh, and one that is kept for white.
TEST(WriteMesh, ColoursStayWhereAnyOfThemIsNotWhite) {
    const auto formatWith = [](const host::Point3& color) {
        support::eSceneBuilder scene;
        host::Mesh mesh = support::GridMesh(1, 1);
        mesh.maps.push_back({0, {{1, 1, 1}, color}, {{{0, 0, 0}}, {{0, 1, 0}}}});
        MeshNode(Model(scene), "hat", mesh);
        eMeshRun run(scene);
        const eFileMesh file = run.Mesh("hat");
        return std::pair(file.subMeshes[0].format, file.stride);
    };
    EXPECT_EQ(formatWith({1, 1, 1}), std::pair(std::uint16_t{0x0013}, std::size_t{32}));
    EXPECT_EQ(formatWith({1, 0.5F, 1}), std::pair(std::uint16_t{0x0017}, std::size_t{36}));
}

// Catches sub-meshes in the order of pointers, ids or faces, a stride of the first format, and fields of one
// format read at the places of another.
TEST(WriteMesh, SubMeshesComeByMaterialNameEachWithItsFormat) {
    support::eSceneBuilder scene;
    eStandardMaterial bumped = TexturedMaterial(scene.Map(eCheckerMap{}));
    bumped.maps[host::kBumpMap].map = scene.Map(eCheckerMap{});
    const int wood = scene.Material("Wood", bumped);
    const int iron = scene.Material("iron", eStandardMaterial{.twoSided = true});
    host::Mesh mesh = support::GridMesh(2, 1);
    mesh.faces[2].setMatID(1);
    mesh.faces[3].setMatID(1);
    MeshNode(Model(scene), "hat", mesh).Material(scene.Material("both", eMultiMaterial{{wood, iron}}));
    eMeshRun run(scene);
    const eFileMesh file = run.Mesh("hat");
    ASSERT_EQ(file.subMeshes.size(), 2U);
    EXPECT_EQ(file.subMeshes[0].material, "iron");
    EXPECT_EQ(file.subMeshes[0].format, 0x0013);
    EXPECT_EQ(file.subMeshes[0].flags, 1);
    EXPECT_EQ(file.subMeshes[1].material, "wood");
    EXPECT_EQ(file.subMeshes[1].format, 0x0113);
    EXPECT_EQ(file.subMeshes[1].flags, 0);
    EXPECT_EQ(file.subMeshes[1].firstTriangle, 2);
    EXPECT_EQ(file.subMeshes[1].firstVertex, 4);
    EXPECT_EQ(file.stride, 48U);
    const eExportVertex vertex = file.Vertex(file.subMeshes[1], 4);
    EXPECT_NEAR(vertex.tangent.x, 1, 1e-6F);
    EXPECT_EQ(vertex.tangent.w, -1);
    // Behind the 32 bytes of a plain vertex the stride is zero.
    for (std::size_t i = 32; i < file.stride; ++i) {
        EXPECT_EQ(file.vertices[i], 0);
    }
}

// Catches a corner that takes the vertex of another corner at its place from which it differs.
TEST(WriteMesh, TrianglesShareVerticesThatAgreeInEverything) {
    const auto verticesWith = [](auto&& change) {
        support::eSceneBuilder scene;
        const int second = scene.Map(eCheckerMap{}, {.channel = 2});
        const int product = scene.Map(eRgbMultiplyMap{{scene.Map(eCheckerMap{}), second}});
        host::Mesh mesh = support::GridMesh(1, 1);
        mesh.maps.push_back({2, {{0, 0, 0}, {1, 0, 0}}, {{{0, 0, 0}}, {{0, 0, 0}}}});
        mesh.maps.push_back({0, {{1, 1, 1}, {0, 0, 0}}, {{{0, 0, 0}}, {{0, 0, 0}}}});
        change(mesh);
        MeshNode(Model(scene), "hat", mesh).Material(scene.Material("m", TexturedMaterial(product)));
        return eMeshRun(scene).Mesh("hat").vertexCount;
    };
    EXPECT_EQ(verticesWith([](host::Mesh&) {}), 4U);
    EXPECT_EQ(verticesWith([](host::Mesh& mesh) { mesh.faces[1].smGroup = 2; }), 6U);
    for (const int channel : {0, 1, 2}) {
        EXPECT_EQ(verticesWith([&](host::Mesh& mesh) { mesh.FindMap(channel)->faces[1] = {{1, 1, 1}}; }), 6U);
    }
}

// Where the corners of a triangle stand, from the lowest x on, for a mesh in the x-y plane.
using eFlatTriangle = std::array<std::pair<float, float>, 3>;

eFlatTriangle Flat(const host::Point3& a, const host::Point3& b, const host::Point3& c) {
    eFlatTriangle triangle{{{a.x, a.y}, {b.x, b.y}, {c.x, c.y}}};
    std::ranges::sort(triangle);
    return triangle;
}

// What the weld makes of the corners of a soup when it is asked for each of them, without triangles that
// degenerate or repeat.
std::vector<eFlatTriangle> WeldedAnew(const eExportMesh& mesh) {
    const eExportMeshFrame& frame = mesh.frames.front();
    eVertexWeld weld(3 * mesh.faces.size(), frame.positions.size());
    std::set<eTriangle> triangles;
    for (std::size_t face = 0; face < mesh.faces.size(); ++face) {
        eTriangle triangle{};
        for (std::size_t corner = 0; corner < 3; ++corner) {
            eExportVertex vertex;
            vertex.position = frame.positions[mesh.faces[face].v[corner]];
            vertex.normal = frame.cornerNormals[face][corner];
            vertex.format = VF_POSITION | VF_NORMAL;
            triangle[corner] = weld.FindOrAdd(vertex);
        }
        triangles.insert(triangle);
    }
    std::vector<eFlatTriangle> welded;
    for (const auto& [a, b, c] : triangles) {
        if (a != b && b != c && c != a) {
            const std::vector<eExportVertex>& vertices = weld.Vertices();
            welded.push_back(Flat(vertices[a].position, vertices[b].position, vertices[c].position));
        }
    }
    return welded;
}

// Catches a corner that takes what another one at its position has become, where near vertices stand in rows
// and the next search may end at another of them.
TEST(WriteMesh, EachCornerIsLookedForAmongNearVertices) {
    std::mt19937 random(7);
    const auto upTo = [&](unsigned micrometres) {
        return static_cast<float>(random() % micrometres) * 1e-6F;
    };
    host::Mesh mesh;
    for (int i = 0; i < 120; ++i) {
        mesh.verts.push_back({upTo(12000), upTo(2000), 0});
    }
    const auto any = [&] { return static_cast<std::uint32_t>(random() % 120); };
    for (int i = 0; i < 900; ++i) {
        mesh.faces.push_back({{any(), any(), any()}, 1, 0});
    }
    support::eSceneBuilder scene;
    MeshNode(Model(scene), "hat", mesh);
    eMeshRun run(scene);
    const eFileMesh file = run.Mesh("hat");
    std::vector<eFlatTriangle> written;
    for (std::size_t i = 0; i < file.indices.size(); i += 3) {
        const auto at = [&](std::size_t index) {
            return file.Vertex(file.subMeshes[0], file.indices[index]).position;
        };
        written.push_back(Flat(at(i), at(i + 1), at(i + 2)));
    }
    std::vector<eFlatTriangle> expected = WeldedAnew(run.Faces("hat"));
    std::ranges::sort(written);
    std::ranges::sort(expected);
    EXPECT_EQ(written, expected);
}

// Catches lost triangles that nobody tells, and an empty sub-mesh in the file.
TEST(WriteMesh, DegenerateAndRepeatedTrianglesAreTold) {
    const std::string warning =
        "Предупреждение: Есть вырожденные треугольники в мэше 'hat'. Используйте WELD.";
    support::eSceneBuilder scene;
    host::Mesh mesh = support::GridMesh(1, 1);
    mesh.faces.push_back({{0, 1, 1}, 1, 0});
    mesh.maps[0].faces.push_back({{0, 1, 1}});
    mesh.faces.push_back(mesh.faces[0]);
    mesh.maps[0].faces.push_back(mesh.maps[0].faces[0]);
    MeshNode(Model(scene), "hat", mesh).Material(scene.Material("Iron", eStandardMaterial{}));
    eMeshRun run(scene);
    EXPECT_THAT(run.Messages(), ElementsAre("Advice: Мэш 'hat', материал 'iron': вырожденных или "
                                            "повторяющихся треугольников 2 из 4",
                                            warning));
    EXPECT_EQ(run.Mesh("hat").indices.size(), 6U);

    support::eSceneBuilder nothing;
    MeshNode(Model(nothing), "hat", support::TriangleMesh({{0, 0, 0}, {1, 0, 0}}, {{0, 1, 1}}));
    eMeshRun failing(nothing);
    EXPECT_THAT(failing.Messages(),
                ElementsAre(HasSubstr("треугольников 1 из 1"), "Error: GenerateStrips failed!"));
    const eFileMesh empty = failing.Mesh("hat");
    EXPECT_EQ(empty.name, "hat");
    EXPECT_THAT(empty.subMeshes, IsEmpty());
    EXPECT_EQ(empty.vertexCount, 0U);
}

// The messages about a mesh that can't be written; the file must not exist.
std::vector<std::string> MessagesOfRefused(const host::Mesh& mesh, const eMapCoordinates& coordinates = {}) {
    support::eSceneBuilder scene;
    const int material = scene.Material("iron", TexturedMaterial(scene.Map(eCheckerMap{}, coordinates)));
    MeshNode(Model(scene), "hat", mesh).Material(material);
    eMeshRun run(scene);
    EXPECT_FALSE(run.Has("units/tank/.mesh"));
    EXPECT_THAT(run.Messages(), Contains(HasSubstr("'hat': Помечен как полигональный")));
    return run.Messages();
}

// Catches half a body in the file, a header that wraps at 16 bits, and numbers that no engine can draw.
TEST(WriteMesh, WhatTheFileCannotHoldIsToldAndLeftOut) {
    EXPECT_THAT(MessagesOfRefused(host::Mesh{}),
                Contains("Ошибка: Кость 'hat' помечена как полигональная, но не содержит треугольников!"));
    host::Mesh hidden = TexturedTriangle();
    hidden.faces[0].flags |= host::Face::kHidden;
    EXPECT_THAT(MessagesOfRefused(hidden), Contains(HasSubstr("видимых граней у нее нет!")));
    EXPECT_THAT(MessagesOfRefused(support::GridMesh(64, 512)),  // 65 times 513 vertices, 65536 triangles
                Contains(HasSubstr("Ошибка: Более 65535 треугольников в 'hat'!")));
    EXPECT_THAT(MessagesOfRefused(support::GridMesh(1, 1), {.tiling = {3e38F, 3e38F}, .angle = 45}),
                Contains(HasSubstr("координаты не являются числами!")));
}

host::Mesh LooseTriangles(std::size_t vertices) {
    host::Mesh mesh;
    for (std::size_t i = 0; i < vertices; ++i) {
        mesh.verts.push_back({static_cast<float>(i % 256), static_cast<float>(i / 256), 0});
    }
    for (std::uint32_t i = 0; i + 2 < vertices; i += 3) {
        mesh.faces.push_back({{i, i + 1, i + 2}, 1, 0});
    }
    // The last vertices share a triangle with earlier ones where their number is no multiple of three.
    const auto last = static_cast<std::uint32_t>(vertices - 1);
    mesh.faces.push_back({{last, last - 1, 0}, 1, 0});
    return mesh;
}

// Catches a limit that is off by one in either direction.
TEST(WriteMesh, AMeshHasAtMost65534Vertices) {
    support::eSceneBuilder scene;
    MeshNode(Model(scene), "hat", LooseTriangles(65534));
    eMeshRun run(scene);
    EXPECT_EQ(run.Mesh("hat").vertexCount, 65534U);
    EXPECT_THAT(MessagesOfRefused(LooseTriangles(65535)), Contains("Ошибка: Более 65535 вершин в 'hat'!"));
}

// Catches the text behind the comma, and blocks left open around the mesh.
TEST(WriteMesh, AnAnimatedTextureHasItsBlockInTheBone) {
    support::eSceneBuilder scene;
    MeshNode(Model(scene), "hat", TexturedTriangle()).Property("AniTex=water,5");
    eMeshRun run(scene);
    EXPECT_THAT(run.Text("units/tank/tank.mdl"), HasSubstr("\t\t{bone \"hat\"\n"
                                                           "\t\t\t{view poly \"hat\"}\n"
                                                           "\t\t\t{animation {texture {name \"water\"}\n"
                                                           "\t\t\t\t\t{texture}\n"
                                                           "\t\t\t\t}\n"
                                                           "\t\t\t}\n"));
}

// Catches a mirror that is not told, one told of the owner itself, and a comparison that minds letter case.
TEST(WriteMesh, AMirroredNodeThatSharesTheMeshIsTold) {
    const auto messagesFor = [](float scale) {
        support::eSceneBuilder scene;
        support::eNode root = Model(scene);
        MeshNode(root, "wheel", TexturedTriangle()).Scale(-1, 1, 1);
        support::eNode other = MeshNode(root, "other", TexturedTriangle()).Property("Mesh=Wheel");
        // Below a view nobody looks.
        MeshNode(other.Scale(scale, 1, 1), "below", TexturedTriangle())
            .Property("Mesh=wheel")
            .Scale(-1, 1, 1);
        return eMeshRun(scene).Messages();
    };
    EXPECT_THAT(
        messagesFor(1),
        ElementsAre("Предупреждение: Инверсный общий полигональный мэш в 'wheel' не поддерживается!"));
    EXPECT_THAT(messagesFor(-1), IsEmpty());
}

// Catches an instance made with the mirror tool that shows its faces from inside, untold; one that shows no
// mesh and is told; and a word for each of them.
TEST(WriteMesh, AMirroredInstanceIsToldLikeAView) {
    for (const bool asksForMesh : {true, false}) {
        support::eSceneBuilder scene;
        support::eNode root = Model(scene);
        support::eNode wheel = MeshNode(root, "wheel", TexturedTriangle());
        for (const char* name : {"right", "rear"}) {
            root.Child(name).SameObject(wheel).Scale(1, -1, 1).Property(asksForMesh ? "Poly" : "spare");
        }
        root.Child("left").SameObject(wheel).Property("Poly");
        const std::vector<std::string> messages = eMeshRun(scene).Messages();
        EXPECT_EQ(messages.size(), asksForMesh ? 1U : 0U);
        EXPECT_THAT(messages, testing::Each("Предупреждение: Инверсный общий полигональный мэш в 'wheel' не "
                                            "поддерживается!"));
    }
}

// Catches material names without the way to the shared folder.
TEST(WriteMesh, MaterialsOfAStructureAreNamedThroughTheCommonFolder) {
    support::eSceneBuilder scene;
    support::eNode root = Model(scene).Property("Structure");
    MeshNode(root, "hat", TexturedTriangle()).Material(scene.Material("iron", eStandardMaterial{}));
    MeshNode(root, "cap", TexturedTriangle());
    eMeshRun run(scene);
    EXPECT_EQ(run.Mesh("hat", "units/tank/common").subMeshes[0].material, "common/iron");
    EXPECT_EQ(run.Mesh("cap", "units/tank/common").subMeshes[0].material, "common/");
}

// Catches a cancel that is not asked for, or that leaves a broken body.
TEST(WriteMesh, ACancelledMeshHoldsWhatWasGathered) {
    support::eSceneBuilder scene;
    MeshNode(Model(scene), "hat", support::GridMesh(20, 20));
    eMeshReading reading(scene);
    eExportBone& bone = reading.Slot("hat");
    ExtractNodeMesh(reading.run, *bone.node, nullptr, nullptr);
    reading.host.SetCancelSource([] { return true; });
    xIo::eMemoryStream body;
    EXPECT_TRUE(WriteMesh(reading.run, body, NodeIndex(*bone.node, nullptr)));
    EXPECT_EQ(bone.vertexCount, 10);  // the first 8 of 800 triangles: one percent
}

// Would catch: an order that is measured on other triangles than those of the file, or made worse.
TEST(WriteMesh, TellsWhatTheOrderSaves) {
    support::eSceneBuilder scene;
    host::Mesh shuffled = support::GridMesh(20, 20);
    std::ranges::shuffle(shuffled.faces, std::mt19937(1));
    MeshNode(Model(scene), "Hat", shuffled);
    support::eExportRun run(scene.Build());
    std::vector<eMeshOrder> orders;
    run.exporter.meshOrderObserver = [&](const eMeshOrder& order) { orders.push_back(order); };
    run.Do();
    ASSERT_EQ(orders.size(), 1U);
    EXPECT_EQ(orders[0].mesh, "hat");
    EXPECT_EQ(orders[0].before.triangles, orders[0].after.triangles);
    EXPECT_EQ(orders[0].before.triangles, 800U);
    EXPECT_LT(2 * orders[0].after.MissesPerTriangle(), orders[0].before.MissesPerTriangle());
    EXPECT_GE(orders[0].after.MissesPerVertex(), 1.0);
}

}  // namespace
