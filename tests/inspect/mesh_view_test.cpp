#include "inspect/mesh_view.h"

#include <gtest/gtest.h>

#include "inspect/inspect.h"
#include "mesh/mesh_run.h"

namespace {

using namespace mesh_test;

// Catches a mesh file that is not known by its content, numbers of the wrong field, and problems kept quiet.
TEST(MeshView, SaysWhatIsInAMeshFile) {
    support::eSceneBuilder scene;
    MeshNode(Model(scene), "hat", support::GridMesh(2, 2))
        .Material(scene.Material("iron", standalone::eStandardMaterial{.twoSided = true}));
    std::string file = eMeshRun(scene).Read("units/tank/.mesh");
    const inspect::eInspection found = inspect::InspectContent(".mesh", BytesOf(file));
    ASSERT_EQ(found.problem.english, "");
    const auto& mesh = found.description["meshes"][0];
    EXPECT_EQ(mesh["name"], "hat");
    EXPECT_EQ(mesh["triangles"], 8);
    EXPECT_EQ(mesh["vertices"], 9);
    EXPECT_EQ(mesh["atvr"], 1.0);  // nine vertices stay in the cache
    EXPECT_EQ(mesh["acmr"], 1.125);
    EXPECT_EQ(mesh["highest"], (inspect::eDescription{2.0, 2.0, 0.0}));
    EXPECT_EQ(mesh["subMeshes"][0]["format"], "position normal maps:1");
    EXPECT_EQ(mesh["subMeshes"][0]["twoSided"], true);
    EXPECT_TRUE(mesh["problems"].empty());

    file[file.size() - 2] = 77;  // the last index
    const inspect::eInspection spoilt = inspect::InspectContent(".mesh", BytesOf(file));
    EXPECT_EQ(spoilt.description["meshes"][0]["problems"].size(), 1U);
    EXPECT_NE(inspect::InspectContent(".mesh", BytesOf(file.substr(0, 60))).problem.english, "");
}

}  // namespace
