#include "standalone/loaders/shared/fit_meshes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

namespace standalone {
namespace {

using host::Point3;

// A grid of side by side quads on the ground, every vertex bound to one of two bones by the half it lies in,
// and with a vertex key that lifts it.
eSceneData GridScene(std::uint32_t side) {
    eMeshObject object;
    eSkinModifier skin;
    host::MapChannel uv{1, {}, {}};
    for (std::uint32_t y = 0; y <= side; ++y) {
        for (std::uint32_t x = 0; x <= side; ++x) {
            object.mesh.verts.push_back({static_cast<float>(x), static_cast<float>(y), 0});
            uv.verts.push_back({static_cast<float>(x) / 8, static_cast<float>(y) / 8, 0});
            skin.firstWeight.push_back(static_cast<std::uint32_t>(skin.weights.size()));
            skin.weights.push_back({x < side / 2 ? 0 : 1, 1});
        }
    }
    skin.firstWeight.push_back(static_cast<std::uint32_t>(skin.weights.size()));
    eVertexKey key{5, object.mesh.verts};
    for (Point3& point : key.vertices) {
        point.z = 1;
    }
    object.vertexKeys.push_back(std::move(key));
    for (std::uint32_t y = 0; y < side; ++y) {
        for (std::uint32_t x = 0; x < side; ++x) {
            const std::uint32_t corner = y * (side + 1) + x;
            for (const auto& v : {std::array{corner, corner + 1, corner + side + 2},
                                  std::array{corner, corner + side + 2, corner + side + 1}}) {
                object.mesh.faces.push_back({{v[0], v[1], v[2]}, 1, 0});
                uv.faces.push_back({{v[0], v[1], v[2]}});
            }
        }
    }
    object.mesh.maps.push_back(std::move(uv));
    skin.bones = {2, 3};
    eSceneData scene;
    scene.objects = {{"grid", std::move(object), {std::move(skin)}}, {{}, eHelperObject{}, {}}};
    scene.materials.resize(1);
    scene.nodes = {
        {.name = "field", .properties = "Poly\r\nLayer=2\r\nIKType=socket", .object = 0, .material = 0},
        {.name = "land", .properties = "Volume", .object = 0},
        {.name = "left", .object = 1},
        {.name = "right", .object = 1}};
    scene.nodes[0].offset.position = {0, 0, 3};
    scene.roots = {0, 1, 2, 3};
    scene.selectionSets = {{"all", {0}}};
    return scene;
}

const eMeshObject& MeshOf(const eSceneData& scene, int node) {
    const int object = scene.nodes[static_cast<std::size_t>(node)].object;
    return std::get<eMeshObject>(scene.objects[static_cast<std::size_t>(object)].kind);
}

// The corners of a face, and what is bound to them, as numbers that can be sorted.
std::array<float, 15> Signature(const eObjectData& object, const eMeshObject& mesh, std::size_t face) {
    const auto& skin = std::get<eSkinModifier>(object.modifiers[0]);
    std::array<float, 15> numbers{};
    for (std::size_t corner = 0; corner < 3; ++corner) {
        const std::uint32_t v = mesh.mesh.faces[face].v[corner];
        numbers[corner * 5] = mesh.mesh.verts[v].x;
        numbers[corner * 5 + 1] = mesh.mesh.verts[v].y;
        numbers[corner * 5 + 2] = mesh.mesh.maps[0].verts[mesh.mesh.maps[0].faces[face].t[corner]].x;
        numbers[corner * 5 + 3] = mesh.vertexKeys[0].vertices[v].z;
        numbers[corner * 5 + 4] = static_cast<float>(skin.weights[skin.firstWeight[v]].bone);
    }
    return numbers;
}

std::vector<std::array<float, 15>> Signatures(const eSceneData& scene, const std::vector<int>& nodes) {
    std::vector<std::array<float, 15>> all;
    for (const int node : nodes) {
        const int object = scene.nodes[static_cast<std::size_t>(node)].object;
        for (std::size_t face = 0; face < MeshOf(scene, node).mesh.faces.size(); ++face) {
            all.push_back(
                Signature(scene.objects[static_cast<std::size_t>(object)], MeshOf(scene, node), face));
        }
    }
    std::ranges::sort(all);
    return all;
}

// Would catch triangles lost or doubled, a piece that is still too large, and pieces that leave behind what
// the whole had: skin, vertex keys, map channel, properties, offset, material, selection.
TEST(FitMeshes, ALargeMeshComesOutInPiecesThatHoldAllOfIt) {
    eSceneData scene = GridScene(280);
    const auto whole = Signatures(scene, {0});
    eImportReport report;
    PartLargeMeshes(scene, report);
    const std::vector<eLoadMessage> warnings = report.TakeWarnings();
    ASSERT_EQ(warnings.size(), 2U);
    EXPECT_NE(warnings[0].text.english.find("field (156800 triangles, 79"), std::string::npos);
    EXPECT_NE(warnings[1].text.english.find("land (156800 triangles)"), std::string::npos);

    const eNodeData& field = scene.nodes[0];
    EXPECT_EQ(field.properties, "Layer=2\r\nIKType=socket");
    EXPECT_EQ(field.children, (std::vector{1, 2, 3, 4}));
    EXPECT_TRUE(Signatures(scene, field.children) == whole);
    for (const int child : field.children) {
        const eNodeData& piece = scene.nodes[static_cast<std::size_t>(child)];
        EXPECT_EQ(piece.name, "field_part" + std::to_string(child));
        EXPECT_EQ(piece.properties, "Poly\r\nLayer=2");
        EXPECT_EQ(piece.material, 0);
        EXPECT_EQ(piece.offset.position, (Point3{0, 0, 3}));
        EXPECT_LE(MeshOf(scene, child).mesh.faces.size(), 65535U);
        EXPECT_LE(MeshOf(scene, child).mesh.verts.size(), 65534U);
    }
    EXPECT_EQ(scene.selectionSets[0].nodes.size(), 5U);
    EXPECT_EQ(MeshOf(scene, 5).mesh.faces.size(), 156800U);
}

// Would catch a mesh of one vertex too many that stays whole, and one that just fits and is parted. The
// corners lie at three places: it is their map coordinates that make vertices of them.
TEST(FitMeshes, OneVertexTooManyPartsAMesh) {
    for (const std::uint32_t triangles : {21844U, 21845U}) {
        eMeshObject dust;
        dust.mesh.verts = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
        host::MapChannel uv{1, {}, {}};
        for (std::uint32_t t = 0; t < 3 * triangles; t += 3) {
            for (std::uint32_t corner = t; corner < t + 3; ++corner) {
                uv.verts.push_back({static_cast<float>(corner), 0, 0});
            }
            uv.faces.push_back({{t, t + 1, t + 2}});
            dust.mesh.faces.push_back({{0, 1, 2}, 1, 0});
        }
        dust.mesh.maps.push_back(std::move(uv));
        eSceneData scene;
        scene.objects = {{"dust", std::move(dust), {}}};
        scene.nodes = {{.name = "dust", .properties = "Poly", .object = 0}};
        scene.roots = {0};
        eImportReport report;
        PartLargeMeshes(scene, report);
        EXPECT_EQ(scene.nodes.size(), triangles == 21844 ? 1U : 3U);
    }
}

// Would catch a triangle without area that is kept, or one with area that goes; in a mesh that moves two
// vertices may lie at one place for the moment.
TEST(FitMeshes, TrianglesWithoutAreaAreLeftOut) {
    eSceneData scene = GridScene(2);
    auto& mesh = std::get<eMeshObject>(scene.objects[0].kind);
    mesh.mesh.verts[1] = mesh.mesh.verts[0];
    mesh.mesh.faces[7].v[2] = mesh.mesh.faces[7].v[0];
    eImportReport report;
    DropFacesWithoutArea(scene, report);
    EXPECT_EQ(MeshOf(scene, 0).mesh.faces.size(), 7U);
    EXPECT_EQ(MeshOf(scene, 0).mesh.maps[0].faces.size(), 7U);

    std::get<eMeshObject>(scene.objects[0].kind).vertexKeys.clear();
    scene.objects[0].modifiers.clear();
    DropFacesWithoutArea(scene, report);
    EXPECT_EQ(MeshOf(scene, 0).mesh.faces.size(), 6U);
    EXPECT_EQ(report.TakeWarnings().at(0).text.english, "triangles without area are left out: field (1)");

    for (host::Face& face : std::get<eMeshObject>(scene.objects[0].kind).mesh.faces) {
        face.v[1] = face.v[0];
    }
    DropFacesWithoutArea(scene, report);
    EXPECT_TRUE(std::holds_alternative<eHelperObject>(scene.objects[0].kind));
}

}  // namespace
}  // namespace standalone
