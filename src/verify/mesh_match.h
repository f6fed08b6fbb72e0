#pragma once

#include "mesh/file/mesh_reader.h"
#include "verify/mesh_verdict.h"
#include "verify/scene_triangles.h"

namespace verify {

// Per triangle of the scene the vertices of the file that its corners have become; -1 for one that is not
// there.
using eCornerVertices = std::vector<std::array<int, 3>>;

// Looks each triangle of the scene up in the mesh of the file by its place, and compares what its corners
// hold. What is left over on either side is told: triangles of the scene that fold up or repeat another are
// no fault. The nodes of the mesh give the findings their places. Linear in the triangles but for those that
// lie upon each other.
eCornerVertices MatchMesh(const eSceneMesh& source, const eSceneTriangles& scene, const eFileMesh& file,
                          const eTolerances& tolerances, eMeshVerdict& verdict);

}  // namespace verify
