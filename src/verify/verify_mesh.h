#pragma once

#include "verify/mesh_match.h"
#include "verify/mesh_verdict.h"
#include "verify/scene_triangles.h"
#include "verify/written_files.h"

namespace verify {

// A mesh of the scene and what it has become.
struct eVerifiedMesh {
    eMeshVerdict verdict;
    eSceneMesh source;
    eSceneTriangles scene{};
    const eFileMesh* file = nullptr;  // null where there is none that can be played
    eCornerVertices vertices{};
};

// Compares a mesh of the written files with what the scene shows at the static frame. A mesh that no file can
// hold, or that has no face to show, must not be there.
eVerifiedMesh VerifyMesh(const eVerifiedScene& scene, const eSceneMesh& source, eBakedLight& light,
                         eWrittenMeshes& files, const eTolerances& tolerances);

}  // namespace verify
