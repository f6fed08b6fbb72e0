#include "mesh/read/extract_mesh.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/ansi.h"
#include "mesh/mesh_run.h"
#include "mesh/read/corner_normal.h"

namespace {

using namespace mesh_test;
using namespace standalone;
using testing::ElementsAre;
using testing::IsEmpty;

void ExpectNear(const host::Point3& actual, const host::Point3& expected) {
    EXPECT_TRUE(actual.Equals(expected, 1e-5F))
        << actual.x << " " << actual.y << " " << actual.z << " instead of " << expected.x << " " << expected.y
        << " " << expected.z;
}

void ExpectNear(const host::Point2& actual, const host::Point2& expected) {
    ExpectNear({actual.x, actual.y, 0}, {expected.x, expected.y, 0});
}

// Catches positions that stay in scene units, or in the world's or the object's space.
TEST(ExtractMesh, PositionsAreMetresInTheBonesSpace) {
    for (const float units : {1.0F, 100.0F}) {
        support::eSceneBuilder scene;
        scene.Settings().unitMetres = 1.0 / units;
        support::eNode node = MeshNode(Model(scene), "hat", TexturedTriangle());
        node.Position(7 * units, 5, 3).Rotation({0, 0, 1}, 90).Scale(units, units, units);
        node.Offset({.position = {1, 0, 0}});
        eMeshRun run(scene);
        ExpectNear(run.Soup("hat").positions[0], {1, 0, 0});
        ExpectNear(run.Soup("hat").positions[1], {3, 0, 0});
        ExpectNear(run.Soup("hat").positions[2], {1, 2, 0});
    }
}

// Catches a mirrored node whose faces turn their back, and lists that keep the host's corner order.
TEST(ExtractMesh, AMirroredNodeKeepsItsFacesVisible) {
    support::eSceneBuilder scene;
    host::Mesh mesh = TexturedTriangle();
    mesh.maps.push_back({0, {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{{0, 1, 2}}}});
    const int map = scene.Map(eCheckerMap{});
    support::eNode node = MeshNode(Model(scene), "hat", mesh).Scale(-1, 1, 1);
    node.Material(scene.Material("iron", TexturedMaterial(map)));
    eMeshRun run(scene);
    // The bone's own space is mirrored too, so the winding shows in the world.
    const host::Matrix3 world = NoScale(run.host.GetINodeByName("hat")->GetNodeTM(0));
    const eExportMesh& soup = run.Faces("hat");
    const eExportMeshFrame& frame = soup.frames.front();
    EXPECT_THAT(soup.faces[0].v, ElementsAre(2, 1, 0));
    const host::Point3 p0 = frame.positions[soup.faces[0].v[0]] * world;
    const host::Point3 normal = host::CrossProd(frame.positions[soup.faces[0].v[1]] * world - p0,
                                                frame.positions[soup.faces[0].v[2]] * world - p0);
    EXPECT_GT(host::DotProd(normal, VectorTransform(world, frame.cornerNormals[0][0])), 0);
    ExpectNear(frame.mapCoords0[0][0], {0, 0});
    ExpectNear(frame.mapCoords0[0][1], {1, 1});
    ExpectNear(frame.mapCoords0[0][2], {0, 1});
    EXPECT_EQ(frame.colors[0][0], 0xFF0000FFU);
    EXPECT_EQ(frame.colors[0][2], 0xFFFF0000U);
}

// Catches normals that go through the matrix of the positions: under an uneven scale they lean over.
TEST(ExtractMesh, NormalsStayAtRightAnglesUnderUnevenScale) {
    support::eSceneBuilder scene;
    const host::Mesh slope = support::TriangleMesh({{0, 0, 0}, {0, 1, 0}, {-1, 0, 1}}, {{0, 1, 2}});
    support::eNode group =
        Model(scene).Child("group").GroupHead().Property("Poly").Object(eMeshObject{TexturedTriangle()});
    group.Child("member").GroupMember().Scale(4, 1, 1).Object(eMeshObject{slope});
    eMeshRun run(scene);
    const eExportMesh& soup = run.Faces("group");
    ASSERT_EQ(soup.faces.size(), 2U);
    const auto& v = soup.faces[1].v;
    const std::vector<host::Point3>& positions = soup.frames[0].positions;
    for (const host::Point3& normal : soup.frames[0].cornerNormals[1]) {
        EXPECT_NEAR(host::DotProd(normal, positions[v[1]] - positions[v[0]]), 0, 1e-5F);
        EXPECT_NEAR(host::DotProd(normal, positions[v[2]] - positions[v[0]]), 0, 1e-5F);
        EXPECT_NEAR(host::Length(normal), 1, 1e-5F);
    }
}

// Catches hidden faces in the file, and vertex numbers that shift when one is left out.
TEST(ExtractMesh, HiddenFacesAreLeftOutAndTheirVerticesStay) {
    support::eSceneBuilder scene;
    host::Mesh mesh = support::GridMesh(2, 1);
    mesh.faces[1].flags |= host::Face::kHidden;
    MeshNode(Model(scene), "hat", mesh);
    eMeshRun run(scene);
    const eExportMesh& soup = run.Faces("hat");
    EXPECT_EQ(soup.faces.size(), 3U);
    EXPECT_EQ(soup.frames[0].positions.size(), 6U);
    EXPECT_EQ(soup.frames[0].mapCoords0.size(), 3U);
    EXPECT_EQ(run.Mesh("hat").vertexCount, 5U);
}

// The triangle with a material whose map has these coordinates.
eCorners<host::Point2> CoordinatesBy(const eMapCoordinates& uv) {
    support::eSceneBuilder scene;
    const int iron = scene.Material("iron", TexturedMaterial(scene.Map(eCheckerMap{}, uv)));
    MeshNode(Model(scene), "hat", TexturedTriangle()).Material(iron);
    eMeshRun run(scene);
    return run.Soup("hat").mapCoords0[0];
}

// Catches an unusable channel taken for another one, a box that is not turned over like other coordinates,
// and the map's tiling and offset left out, or applied behind the flip.
TEST(ExtractMesh, CoordinatesComeFromTheMapsChannelOrTheObjectsBox) {
    for (const eMapCoordinates& uv :
         {eMapCoordinates{.source = 1}, eMapCoordinates{.source = 0, .channel = 5}}) {
        const eCorners<host::Point2> corners = CoordinatesBy(uv);
        ExpectNear(corners[0], {0, 1});
        ExpectNear(corners[1], {1, 1});
        ExpectNear(corners[2], {0, 0});
    }
    const eCorners<host::Point2> tiled = CoordinatesBy({.offset = {0.25F, 0.5F}, .tiling = {2, 3}});
    ExpectNear(tiled[1], {2.25F, 0.5F});
    ExpectNear(tiled[2], {0.25F, -2.5F});
}

// Catches a face without material that asks a map all the same, and opacity and vertex alpha that replace
// each other.
TEST(ExtractMesh, OpacityAndVertexAlphaMultiply) {
    for (const float opacity : {1.0F, 0.5F}) {
        support::eSceneBuilder scene;
        host::Mesh mesh = TexturedTriangle();
        mesh.maps.push_back({host::Mesh::kVertexAlphaChannel, {{0.5F, 0, 0}, {0.25F, 0, 0}}, {{{0, 1, 0}}}});
        support::eNode node = MeshNode(Model(scene), "hat", mesh);
        if (opacity != 1) {
            node.Material(scene.Material("glass", eStandardMaterial{.opacity = opacity}));
        }
        eMeshRun run(scene);
        ExpectNear(run.Soup("hat").mapCoords0[0][1], {0, 1});
        EXPECT_EQ(run.Soup("hat").colors[0][0], opacity == 1 ? 0x80FFFFFFU : 0x40FFFFFFU);
        EXPECT_EQ(run.Soup("hat").colors[0][1], opacity == 1 ? 0x40FFFFFFU : 0x20FFFFFFU);
    }
}

// Catches an index beyond the channel that is followed, or that is told once per frame.
TEST(ExtractMesh, ABrokenVertexAlphaChannelIsToldAndLeavesTheNodeOut) {
    support::eSceneBuilder scene;
    host::Mesh mesh = TexturedTriangle();
    mesh.maps.push_back({host::Mesh::kVertexAlphaChannel, {{0.5F, 0, 0}}, {{{0, 1, 0}}}});
    MeshNode(Model(scene), "Шляпа"_ansi, mesh);
    eMeshRun run(scene);
    EXPECT_EQ(run.Messages().front(), "Ошибка: Испорченный канал вертескной альфы в 'Шляпа'");
    EXPECT_FALSE(run.Has("units/tank/.mesh"));
}

// Catches the wrong layer order, a colour that blends and tints at once, and coordinates of the wrong layer.
TEST(ExtractMesh, AMixByVertexColourPutsTheRedIntoAlpha) {
    support::eSceneBuilder scene;
    host::Mesh mesh = TexturedTriangle();
    mesh.maps.push_back({0, {{0.25F, 0.5F, 0.75F}}, {{{0, 0, 0}}}});
    const int first = scene.Map(eCheckerMap{}, {.offset = {10, 0}});
    const int second = scene.Map(eCheckerMap{}, {.offset = {20, 0}});
    const int blend = scene.Map(eVertexColorMap{});
    const int mix = scene.Map(eMixMap{.maps = {first, second, blend}});
    MeshNode(Model(scene), "hat", mesh).Material(scene.Material("moss", TexturedMaterial(mix)));
    eMeshRun run(scene);
    const eExportMeshFrame& soup = run.Soup("hat");
    EXPECT_EQ(soup.mapCoords0[0][0].x, 10);
    EXPECT_EQ(soup.mapCoords1[0][0].x, 20);
    EXPECT_EQ(soup.colors[0][0], 0xBFFFFFFFU);
    const eFileMesh file = run.Mesh("hat");
    EXPECT_EQ(file.Vertex(file.subMeshes[0], 0).uv0.x, 10);
    EXPECT_EQ(file.Vertex(file.subMeshes[0], 0).uv1.x, 20);
}

// Catches a blend map asked at turned-over coordinates, and one moved by its own transform twice.
TEST(ExtractMesh, AMixByAMapIsAskedAtTheCorner) {
    support::eSceneBuilder scene;
    // White where v lies in the lower half, black above.
    const int blend = scene.Map(eCheckerMap{.colors = {host::Color{1, 1, 1}, host::Color{0, 0, 0}}});
    const int mix = scene.Map(eMixMap{.maps = {scene.Map(eCheckerMap{}), scene.Map(eCheckerMap{}), blend}});
    host::Mesh mesh = TexturedTriangle();
    mesh.maps[0].verts = {{0.1F, 0.1F, 0}, {0.2F, 0.2F, 0}, {0.1F, 0.9F, 0}};
    MeshNode(Model(scene), "hat", mesh).Material(scene.Material("moss", TexturedMaterial(mix)));
    eMeshRun run(scene);
    EXPECT_EQ(run.Soup("hat").colors[0][0], 0x00FFFFFFU);
    EXPECT_EQ(run.Soup("hat").colors[0][2], 0xFFFFFFFFU);
}

// Catches ids beyond the list, a slot or a list that is empty, and a walk that stops one level down.
TEST(ExtractMesh, TheLeafMaterialIsFoundByIdModuloTheSlots) {
    support::eSceneBuilder scene;
    const int iron = scene.Material("iron", eStandardMaterial{});
    const int wood = scene.Material("wood", eStandardMaterial{});
    const int inner = scene.Material("inner", eMultiMaterial{{iron, wood}});
    const int outer = scene.Material("outer", eMultiMaterial{{inner, -1, iron}});
    const int empty = scene.Material("empty", eMultiMaterial{});
    host::Mesh mesh = support::GridMesh(2, 1);
    for (std::uint16_t i = 0; i < 4; ++i) {
        mesh.faces[i].setMatID(i);
    }
    support::eNode root = Model(scene);
    MeshNode(root, "hat", mesh).Material(outer);
    MeshNode(root, "cap", mesh).Material(empty);
    eMeshRun run(scene);
    const auto found = [&run](const char* node, std::size_t face) {
        const eExportMesh& soup = run.Faces(node);
        return soup.materials[soup.faces[face].material];
    };
    EXPECT_EQ(found("cap", 3).first, nullptr);
    EXPECT_EQ(found("hat", 0).first->GetName(), "iron");
    EXPECT_EQ(found("hat", 1).first, nullptr);
    EXPECT_EQ(found("hat", 2).first->GetName(), "iron");
    EXPECT_EQ(found("hat", 3).first->GetName(), "wood");  // id 3: slot 0 of the outer, 1 of the inner
    EXPECT_EQ(found("hat", 3).second, 3U);
}

// Catches specified normals that are taken without being explicit, from the wrong corner of a mirrored face,
// or with the length that a scale gives them.
TEST(ExtractMesh, OnlyExplicitNormalsReplaceTheBuiltOnes) {
    for (const bool mirrored : {false, true}) {
        support::eSceneBuilder scene;
        host::Mesh mesh = TexturedTriangle();
        mesh.specifiedNormals = host::MeshNormalSpec{
            .normals = {{0, 1, 0}, {1, 0, 0}}, .faceNormals = {0, 1, -1}, .explicitNormals = {true, false}};
        support::eNode node = MeshNode(Model(scene), "hat", mesh);
        node.Scale(2, 2, mirrored ? -2.0F : 2.0F);
        eMeshRun run(scene);
        const auto& normals = run.Soup("hat").cornerNormals[0];
        ExpectNear(normals[mirrored ? 2 : 0], {0, 1, 0});
        ExpectNear(normals[1], {0, 0, 1});
        ExpectNear(normals[mirrored ? 0 : 2], {0, 0, 1});
    }
}

// Catches normals without direction in the file, and a face that takes another's normal for its own.
TEST(ExtractMesh, ANormalThatCancelsOutIsTheFacesOwn) {
    support::eSceneBuilder scene;
    support::eNode root = Model(scene);
    const std::vector<host::Point3> square = {{0, 0, 0}, {0, 2, 0}, {0, 2, 1}, {0, 0, 1}};
    MeshNode(root, "card", support::TriangleMesh(square, {{0, 1, 2}, {0, 2, 3}, {2, 1, 0}, {3, 2, 0}}));
    MeshNode(root, "sliver", support::TriangleMesh({{0, 0, 0}, {1, 0, 0}, {3, 0, 0}}, {{0, 1, 2}}));
    host::Mesh unset = TexturedTriangle();
    unset.specifiedNormals =
        host::MeshNormalSpec{.normals = {{}}, .faceNormals = {0, 0, 0}, .explicitNormals = {true}};
    MeshNode(root, "unset", unset);
    MeshNode(root, "tiny", TexturedTriangle()).Offset({.scale = {1e-25F, 1e-25F, 1e-25F}});
    eMeshRun run(scene);
    EXPECT_EQ(run.Mesh("card").vertexCount, 8U);
    for (std::size_t face = 0; face < 4; ++face) {
        ExpectNear(run.Soup("card").cornerNormals[face][2], {face < 2 ? 1.0F : -1.0F, 0, 0});
    }
    for (const char* node : {"sliver", "unset", "tiny"}) {
        ExpectNear(run.Soup(node).cornerNormals[0][0], {0, 0, 1});
    }
}

// Catches a corner that takes another group's normal, and the first of several that fit.
TEST(CornerNormal, TheLastNormalOfTheFacesGroupsCounts) {
    host::Mesh mesh = TexturedTriangle();
    mesh.buildRenderNormals();
    mesh.renderNormals = {{{1, 0, 0}, 1}, {{2, 0, 0}, 3}, {{3, 0, 0}, 4}};
    const auto normalFor = [&](std::uint32_t smoothing, std::uint32_t flags) {
        mesh.faces[0].smGroup = smoothing;
        mesh.renderVerts[0] = {flags, 0, {9, 0, 0}};
        return GetCornerNormal(mesh, 0, 0).x;
    };
    EXPECT_EQ(normalFor(1, 3), 2);
    EXPECT_EQ(normalFor(4, 3), 3);
    EXPECT_EQ(normalFor(8, 1), 9);
    EXPECT_EQ(normalFor(1, host::RVertex::kSpecifiedNormal), 9);
    for (const auto& [smoothing, flags] : {std::pair(8U, 3U), {1U, 0U}, {0U, 3U}, {0U, 1U}}) {
        EXPECT_EQ(normalFor(smoothing, flags), 0) << "the face's own, for group " << smoothing;
    }
}

// Catches a warning for each face or frame, one for all maps, and a wrong count of faces.
TEST(ExtractMesh, WorldCoordinatesAreToldOnceForEachNodeAndMap) {
    support::eSceneBuilder scene;
    const auto wet = [&scene](const char* map) {
        return scene.Material(map, TexturedMaterial(scene.Map(eCheckerMap{}, {.source = 3}, map)));
    };
    host::Mesh mesh = support::GridMesh(2, 1);
    mesh.faces[3].setMatID(1);
    support::eNode hat = MeshNode(Model(scene).Property("animation=wave,all,0-3"), "hat", mesh);
    hat.Property("CommonMesh").Material(scene.Material("m", eMultiMaterial{{wet("rain"), wet("hail")}}));
    scene.SelectionSet("all", {hat});
    eMeshRun run(scene);
    const auto told = [](const std::string& map, const std::string& rest) {
        return "Предупреждение: Неподдерживаемый канал текстурирования в материале '" + map +
               "'. Будет использоваться 'Object XYZ'.\nУзел 'hat', граней: " + rest;
    };
    EXPECT_THAT(run.Messages(), ElementsAre(told("rain", "3."), told("hail", "1.")));
}

// Catches a second coordinate set that comes from the wrong map.
TEST(ExtractMesh, EachKindOfMaterialHasItsMaps) {
    const auto mapAt = [](support::eSceneBuilder& scene, float u) {
        return scene.Map(eCheckerMap{}, {.offset = {u, 0}});
    };
    const auto coordinates = [](support::eSceneBuilder& scene, int material) {
        MeshNode(Model(scene), "hat", TexturedTriangle()).Material(material);
        eMeshRun run(scene);
        const eExportMeshFrame& soup = run.Soup("hat");
        return std::pair(soup.mapCoords0[0][0].x, soup.mapCoords1[0][0].x);
    };
    {
        support::eSceneBuilder scene;
        eStandardMaterial bumped = TexturedMaterial(mapAt(scene, 10));
        bumped.maps[host::kBumpMap].map = mapAt(scene, 20);
        bumped.maps[host::kSpecularLevelMap].map = mapAt(scene, 30);
        EXPECT_EQ(coordinates(scene, scene.Material("m", bumped)), std::pair(10.0F, 20.0F));
    }
    {
        support::eSceneBuilder scene;
        eStandardMaterial shiny = TexturedMaterial(mapAt(scene, 10));
        shiny.maps[host::kBumpMap] = {.map = mapAt(scene, 20), .amount = 0};
        shiny.maps[host::kSpecularLevelMap].map = mapAt(scene, 30);
        EXPECT_EQ(coordinates(scene, scene.Material("m", shiny)), std::pair(10.0F, 30.0F));
    }
    {
        support::eSceneBuilder scene;
        const int product = scene.Map(eRgbMultiplyMap{{mapAt(scene, 10), mapAt(scene, 20)}});
        EXPECT_EQ(coordinates(scene, scene.Material("m", TexturedMaterial(product))),
                  std::pair(10.0F, 20.0F));
    }
    for (const bool wrapped : {false, true}) {
        support::eSceneBuilder scene;
        const int lower = scene.Material("a", TexturedMaterial(mapAt(scene, 10)));
        const int upper = scene.Material("b", TexturedMaterial(mapAt(scene, 20)));
        int layered = scene.Material("m", eTwoLayerMaterial{{lower, upper}});
        layered = wrapped ? scene.Material("w", eSorrelMaterial{.material = layered}) : layered;
        EXPECT_EQ(coordinates(scene, layered), std::pair(10.0F, 20.0F));
    }
}

}  // namespace
