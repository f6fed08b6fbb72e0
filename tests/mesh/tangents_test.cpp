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
    eStandardMaterial bumped = TexturedMaterial(scene.Map(eBitmapMap{.file = "rust.png"}));
    bumped.maps[host::kBumpMap].map = scene.Map(eBitmapMap{.file = "none.png"});
    host::Mesh mesh = TexturedTriangle();
    mesh.maps[0].verts = coordinates;
    MeshNode(Model(scene), "hat", mesh).Material(scene.Material("rock", bumped));
    eMeshRun run(scene);
    std::vector<std::string> told = run.Messages();
    std::erase_if(told,
                  [](const std::string& text) { return text.find(") нет на диске") != std::string::npos; });
    EXPECT_EQ(told, messages);
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

// Catches a tangent that leans out of the plane which the normal of its corner stands upon.
TEST(Tangents, StandAtRightAnglesToTheNormal) {
    support::eSceneBuilder scene;
    eStandardMaterial bumped = TexturedMaterial(scene.Map(eCheckerMap{}));
    bumped.maps[host::kBumpMap].map = scene.Map(eBitmapMap{.file = "none.png"});
    host::Mesh mesh = TexturedTriangle();
    mesh.specifiedNormals = host::MeshNormalSpec{
        .normals = {{0.6F, 0, 0.8F}}, .faceNormals = {0, 0, 0}, .explicitNormals = {true}};
    MeshNode(Model(scene), "hat", mesh).Material(scene.Material("rock", bumped));
    eMeshRun run(scene);
    ExpectTangent(run.Soup("hat").tangents[0][1], {0.8F, 0, -0.6F, -1});
}

// Catches infinities and NaN in the file, and a zero vector that no shader can normalise.
TEST(Tangents, AFaceWithoutAreaInMapSpaceHasAUnitTangentAndIsTold) {
    const std::string warning =
        "Advice: В мэше 'hat' есть треугольники без площади в текстурных координатах: у карты "
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

}  // namespace
