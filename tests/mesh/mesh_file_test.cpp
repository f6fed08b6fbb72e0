#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mesh/byte_pieces.h"
#include "mesh/mesh_run.h"

namespace {

using namespace mesh_test;
using namespace standalone;
using testing::IsEmpty;

support::eNode ModelWithTriangle(support::eSceneBuilder& scene, const std::string& name) {
    const int iron = scene.Material("iron", TexturedMaterial(scene.Map(eCheckerMap{})));
    return MeshNode(Model(scene), name, TexturedTriangle()).Material(iron);
}

std::string ExportMesh(const support::eSceneBuilder& scene) {
    const eMeshRun run(scene);
    EXPECT_THAT(run.Messages(), IsEmpty());
    return run.Read("units/tank/.mesh");
}

// Catches every change of the format that the engine reads: order, widths, winding, flipped v, the channel
// of an all-white mesh.
TEST(MeshFile, OneTriangleIs199Bytes) {
    support::eSceneBuilder scene;
    ModelWithTriangle(scene, "hat");
    const std::string file = ExportMesh(scene);

    eBytePieces expected;
    expected.Text("file tag", "PMSH").Text("table tag", "MTBL").Value("meshCount", 1U);
    expected.Text("name", "\3hat").Value("offset", 0U);
    expected.Text("body tag", "MESH").Text("format mark", "PM01").Text("bounds tag", "BNDS");
    expected.Values("bounds", {0.0F, 0.0F, 0.0F, 2.0F, 2.0F, 0.0F});
    expected.Text("sub-mesh tag", "SUBM");
    expected.Values<std::uint16_t>("sub-mesh", {0x0013, 0, 1, 0, 3, 0}).Text("material", "\4iron");
    expected.Text("vertices tag", "VERT").Value("vertexCount", 3U);
    expected.Values<std::uint16_t>("stride and reserved", {32, 0});
    expected.Values("vertex 0", {0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 1.0F, 0.0F, 1.0F});
    expected.Values("vertex 1", {2.0F, 0.0F, 0.0F, 0.0F, 0.0F, 1.0F, 1.0F, 1.0F});
    expected.Values("vertex 2", {0.0F, 2.0F, 0.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F});
    expected.Text("indices tag", "INDX").Value("indexCount", 3U);
    expected.Values<std::uint16_t>("indices", {2, 1, 0});
    EXPECT_TRUE(expected.Match(file));
    EXPECT_EQ(file.size(), 199U);
}

// Catches a skin chunk or palette in another place or order, a weight too many, bones by rising number
// instead of falling weight.
TEST(MeshFile, TheSkinnedTriangleNamesItsBonesAndItsPalette) {
    support::eSceneBuilder scene;
    support::eNode node = ModelWithTriangle(scene, "hat");
    support::eNode hip = node.Child("Hip").Object(eHelperObject{});
    support::eNode knee = node.Child("knee_Dup").Object(eHelperObject{});
    node.Skin({hip, knee}, {{{0, 0.75F}, {1, 0.25F}}, {{0, 0.25F}, {1, 0.75F}}, {{1, 0.5F}, {0, 0.5F}}});
    const std::string file = ExportMesh(scene);

    eBytePieces expected;
    expected.Text("head", file.substr(0, 56));
    expected.Text("skin tag", "SKIN").Value("boneCount", 2U).Text("bones", "\3hip\4knee");
    expected.Text("sub-mesh tag", "SUBM").Values<std::uint16_t>("sub-mesh", {0x0213, 0, 1, 0, 3, 2});
    expected.Text("palette", std::string("\3\0\1\2", 4)).Text("material", "\4iron");
    expected.Text("vertices tag", "VERT").Value("vertexCount", 3U);
    expected.Values<std::uint16_t>("stride and reserved", {40, 0});
    expected.Values("vertex 0", {0.0F, 0.0F, 0.0F, 0.75F}).Text("bones of 0", std::string("\1\2\0\0", 4));
    expected.Values("rest of 0", {0.0F, 0.0F, 1.0F, 0.0F, 1.0F});
    expected.Values("vertex 1", {2.0F, 0.0F, 0.0F, 0.75F}).Text("bones of 1", std::string("\2\1\0\0", 4));
    expected.Values("rest of 1", {0.0F, 0.0F, 1.0F, 1.0F, 1.0F});
    expected.Values("vertex 2", {0.0F, 2.0F, 0.0F, 0.5F}).Text("bones of 2", std::string("\2\1\0\0", 4));
    expected.Values("rest of 2", {0.0F, 0.0F, 1.0F, 0.0F, 0.0F});
    expected.Text("indices tag", "INDX").Value("indexCount", 3U);
    expected.Values<std::uint16_t>("indices", {2, 1, 0});
    EXPECT_TRUE(expected.Match(file));
}

// Catches offsets that count from the wrong place, and the long form of a string's length.
TEST(MeshFile, TheTableLeadsToEveryBody) {
    support::eSceneBuilder scene;
    const std::string longName(300, 'n');
    support::eNode node = ModelWithTriangle(scene, longName);
    node.Child("second").Property("Poly").Object(eMeshObject{support::GridMesh(3, 2)});
    const std::string file = ExportMesh(scene);

    std::string problem;
    const std::optional<eMeshFileContent> content = ReadMeshFile(BytesOf(file), problem);
    ASSERT_TRUE(content) << problem;
    ASSERT_EQ(content->meshes.size(), 2U);
    // A mesh is written when the walk comes back from the children.
    EXPECT_EQ(content->meshes[0].name, "second");
    EXPECT_EQ(content->meshes[1].name, longName);
    EXPECT_EQ(content->meshes[1].place - content->meshes[0].place, content->meshes[0].size);
    EXPECT_EQ(content->meshes[0].indices.size(), 3U * 12);
    for (const eFileMesh& mesh : content->meshes) {
        EXPECT_THAT(CheckMesh(mesh), IsEmpty());
    }
}

struct eSpoiltField {
    const char* name;
    std::size_t offset;
    std::uint16_t value;
    const char* problem;
};

// Catches a check that does not look at a field.
TEST(MeshCheck, NamesWhatIsWrongAndWhere) {
    support::eSceneBuilder scene;
    ModelWithTriangle(scene, "hat");
    const std::string file = ExportMesh(scene);
    for (const eSpoiltField& field : {
             eSpoiltField{"format", 60, 0x001B, "a vertex format is not known at byte 56"},
             eSpoiltField{"wide format", 60, 0x0113, "a vertex is larger than the stride at byte 89"},
             eSpoiltField{"first triangle", 62, 1, "the triangles don't follow"},
             eSpoiltField{"first vertex", 66, 1, "the vertices don't follow"},
             eSpoiltField{"vertex count", 68, 4, "a sub-mesh leaves its mesh at byte 56"},
             eSpoiltField{"flags", 70, 4, "a sub-mesh has unknown flags at byte 56"},
             eSpoiltField{"position", 91, 0x7F80, "a vertex has a number that is not finite at byte 89"},
             eSpoiltField{"another position", 91, 0x4F00, "a position lies outside the bounds at byte 89"},
             eSpoiltField{"normal", 111, 0x4000, "a normal is not of unit length at byte 89"},
             eSpoiltField{"index", 193, 3, "a triangle uses a vertex of another sub-mesh at byte 193"},
         }) {
        std::string spoilt = file;
        std::memcpy(spoilt.data() + field.offset, &field.value, sizeof field.value);
        std::string problem;
        const auto content = ReadMeshFile(BytesOf(spoilt), problem);
        ASSERT_TRUE(content) << field.name << ": " << problem;
        EXPECT_THAT(CheckMesh(content->meshes.front()), testing::Contains(testing::HasSubstr(field.problem)))
            << field.name;
    }
}

}  // namespace
