#include "host/mesh.h"

#include <gtest/gtest.h>

#include "support/scene_builder.h"

namespace {

// Three faces round vertex 0, each in a plane of its own: towards +z, +x and +y.
host::Mesh Corner(std::uint32_t first, std::uint32_t second, std::uint32_t third) {
    host::Mesh mesh = support::TriangleMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                                            {{0, 1, 2}, {0, 2, 3}, {0, 3, 1}});
    mesh.faces[0].smGroup = first;
    mesh.faces[1].smGroup = second;
    mesh.faces[2].smGroup = third;
    mesh.buildRenderNormals();
    return mesh;
}

// Would catch normals weighted by area or angle, and hidden faces left out.
TEST(RenderNormals, UnitNormalsAreSummedUnweighted) {
    host::Mesh mesh = Corner(1, 1, 0);
    mesh.verts[1] = {100, 0, 0};
    mesh.faces[0].flags |= host::Face::kHidden;
    mesh.buildRenderNormals();
    ASSERT_EQ(mesh.renderVerts[0].NormalCount(), 1U);
    EXPECT_TRUE(mesh.renderVerts[0].normal.Equals(host::Normalize({1, 0, 1}), 1e-6F));
    EXPECT_EQ(mesh.faceNormals[2], (host::Point3{0, 1, 0}));
}

// Would catch sets that a third face's groups connect and that stay two, and groups of their own that are
// mixed.
TEST(RenderNormals, FacesWhoseGroupsHangTogetherShareANormal) {
    const host::Mesh apart = Corner(1, 2, 4);
    ASSERT_EQ(apart.renderVerts[0].NormalCount(), 3U);
    EXPECT_EQ(apart.renderNormals[apart.renderVerts[0].firstNormal + 1].smGroup, 2U);
    EXPECT_EQ(apart.renderNormals[apart.renderVerts[0].firstNormal + 1].normal, (host::Point3{1, 0, 0}));
    const host::Mesh joined = Corner(1, 2, 3);
    ASSERT_EQ(joined.renderVerts[0].NormalCount(), 1U);
    EXPECT_TRUE(joined.renderVerts[0].normal.Equals(host::Normalize({1, 1, 1}), 1e-6F));
    EXPECT_EQ(Corner(0, 0, 0).renderVerts[0].NormalCount(), 0U) << "faces without smoothing take no part";
}

}  // namespace
