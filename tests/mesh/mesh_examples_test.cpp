#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "animation/animation_reader.h"
#include "mesh/mesh_run.h"
#include "mesh/vertex_layout.h"
#include "standalone/loaders/load_scene.h"
#include "support/source_tree.h"

namespace {

using namespace mesh_test;
using testing::IsEmpty;

eMeshRun ExportExample(const char* name) {
    const auto file = support::SourceTree() / "examples" / (std::string(name) + ".scene.json");
    standalone::eLoadResult loaded = standalone::LoadScene(file.string());
    EXPECT_TRUE(loaded.scene);
    return eMeshRun(std::move(loaded.scene).value_or(standalone::eSceneData{}));
}

// The formats of the mesh's sub-meshes, by material.
std::map<std::string, VertexFormat> FormatsOf(const eFileMesh& mesh) {
    std::map<std::string, VertexFormat> formats;
    for (const eFileSubMesh& subMesh : mesh.subMeshes) {
        formats[subMesh.material] = subMesh.format;
    }
    return formats;
}

// Catches an example that no longer shows what it is there for: edges, exclusion, mirror, merging.
TEST(MeshExamples, TheYardShowsEdgesLightAndAMergedMesh) {
    eMeshRun run = ExportExample("yard");
    EXPECT_THAT(run.Messages(), IsEmpty());
    const char* const folder = "buildings/yard";
    EXPECT_EQ(run.Mesh("round_roof", folder).vertexCount, 6U);
    EXPECT_EQ(run.Mesh("sharp_roof", folder).vertexCount, 8U);
    EXPECT_EQ(FormatsOf(run.Mesh("sign", folder))["wood"], 0x0013U);
    EXPECT_EQ(FormatsOf(run.Mesh("sign_left", folder))["wood"], 0x0017U);
    EXPECT_EQ(run.Mesh("fence", folder).indices.size(), 3U * 36);
    EXPECT_EQ(run.Mesh("post_left", folder).name, "");
}

// Catches tangents and second layers that get lost between material and format.
TEST(MeshExamples, TheWallShowsTangentsAndTwoLayers) {
    eMeshRun run = ExportExample("materials");
    auto formats = FormatsOf(run.Mesh("wall", "buildings/ruin"));
    EXPECT_NE(formats["bricks"] & VF_TANGENT, 0U);
    EXPECT_EQ(UvCount(formats["layers"]), 2);
    EXPECT_EQ(UvCount(formats["glow"]), 2);
}

// Catches frames that don't fit the mesh that they move.
TEST(MeshExamples, TheFlagIsAnimatedByFrames) {
    eMeshRun run = ExportExample("waving_flag");
    const eFileMesh cloth = run.Mesh("cloth", "props/flagpole");
    EXPECT_EQ(cloth.vertexCount, 10U);
    const std::string file = run.Read("props/flagpole/wave.anm");
    std::string problem;
    const std::optional<eAnimation> wave = ReadAnimation(BytesOf(file), problem);
    ASSERT_TRUE(wave) << problem;
    ASSERT_EQ(wave->frames.size(), 11U);
    const auto blocks =
        ReadVertexSection(wave->frames[0].keys[0].vertexSection, static_cast<int>(cloth.stride), problem);
    ASSERT_TRUE(blocks) << problem;
    ASSERT_EQ(blocks->size(), 1U);
    ASSERT_EQ(blocks->front().count, 10);
    // The first frame is the static one.
    for (std::size_t v = 0; v < cloth.vertexCount; ++v) {
        const eExportVertex moving =
            UnpackVertex(cloth.subMeshes[0].format, blocks->front().vertices.data() + v * cloth.stride);
        EXPECT_EQ(moving.position, cloth.Vertex(cloth.subMeshes[0], v).position);
    }
}

}  // namespace
