#include "mesh/build/tangents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mesh/build/texture_size_estimate.h"
#include "mesh/mesh_run.h"

namespace {

using namespace mesh_test;
using namespace standalone;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// The tangents of a triangle in the x-y plane with a bump map and these map coordinates; v as the host has
// it.
eCorners<host::Point4> TangentsFor(const std::vector<host::Point3>& coordinates,
                                   const std::vector<std::string>& messages = {}) {
    support::eSceneBuilder scene;
    eStandardMaterial bumped = TexturedMaterial(scene.Map(eCheckerMap{}));
    bumped.maps[host::kBumpMap].map = scene.Map(eBitmapMap{.file = "none.png"});
    host::Mesh mesh = TexturedTriangle();
    mesh.maps[0].verts = coordinates;
    MeshNode(Model(scene), "hat", mesh).Material(scene.Material("rock", bumped));
    eMeshRun run(scene);
    EXPECT_EQ(run.Messages(), messages);
    return run.Soup("hat").tangents[0];
}

void ExpectTangent(const host::Point4& tangent, const host::Point4& expected) {
    EXPECT_TRUE(tangent.Equals(expected, 1e-5F))
        << tangent.x << " " << tangent.y << " " << tangent.z << " " << tangent.w;
}

// Catches a tangent along v, a sign of the other hand, and one that is not of unit length.
TEST(Tangents, PointWhereUGrows) {
    // File v runs against y, so normal, tangent and bitangent are left-handed.
    ExpectTangent(TangentsFor({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}})[1], {1, 0, 0, -1});
    ExpectTangent(TangentsFor({{0, 0, 0}, {-1, 0, 0}, {0, 1, 0}})[1], {-1, 0, 0, 1});
    ExpectTangent(TangentsFor({{0, 0, 0}, {0, 1, 0}, {3, 0, 0}})[0], {0, 1, 0, 1});
}

// Catches infinities and NaN in the file, and a zero vector that no shader can normalise.
TEST(Tangents, AFaceWithoutAreaInMapSpaceHasAUnitTangentAndIsTold) {
    const std::string warning =
        "Предупреждение: В мэше 'hat' есть треугольники без площади в текстурных координатах: у карты "
        "нормалей "
        "нет на них направления.\nНеобходимо исправить развертку.";
    for (const std::vector<host::Point3>& flat : {std::vector<host::Point3>{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
                                                  {{0, 0, 0}, {1, 1, 0}, {2, 2, 0}},
                                                  {{0, 0, 0}, {1e-20F, 0, 0}, {0, 1e-20F, 0}}}) {
        for (const host::Point4& tangent : TangentsFor(flat, {warning})) {
            EXPECT_NEAR(host::Length({tangent.x, tangent.y, tangent.z}), 1, 1e-6F);
            EXPECT_NEAR(tangent.z, 0, 1e-6F);
            EXPECT_EQ(tangent.w, 1);
        }
    }
}

// Catches ratios of the wrong direction or without their limits, and a mean that forgets the last triangle.
TEST(TextureSizeEstimate, FollowsTheLastTriangles) {
    const eCorners<host::Point3> positions{host::Point3{0, 0, 0}, {8, 0, 0}, {0, 4, 0}};
    eExportMaterialUse use;
    EstimateTextureSize(use, positions, {host::Point3{0, 0, 0}, {0.5F, 0, 0}, {0, 0.25F, 0}});
    // The diagonal, of length 8.944, is the longest way for either coordinate.
    EXPECT_NEAR(use.sizeU, 0.5F * 8.944272F / 0.5F, 1e-4F);
    EXPECT_NEAR(use.sizeV, 0.5F * 8.944272F / 0.25F, 1e-4F);
    const float before = use.sizeU;
    EstimateTextureSize(use, positions, {host::Point3{0, 0, 0}, {0.015F, 0, 0}, {0, 0.005F, 0}});
    EXPECT_NEAR(use.sizeU, (before + 256) / 2, 1e-4F);
    EXPECT_NEAR(use.sizeV, 0.5F * 8.944272F / 0.25F, 1e-4F);  // differences below 0.01 count as none
    EstimateTextureSize(use, positions, {host::Point3{0, 0, 0}, {20, 0, 0}, {0, 20, 0}});
    EXPECT_NEAR(use.sizeU, (before + 256) / 2, 1e-4F);  // ratios up to 1 change nothing
}

}  // namespace
