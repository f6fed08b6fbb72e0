#pragma once

#include "mesh/file/mesh_reader.h"
#include "verify/scene_triangles.h"

namespace verify {

// What the vertices of a mesh file say of bones, behind their palettes, against what the scene says.
class eWrittenWeights {
public:
    eWrittenWeights(const eFileMesh& mesh, const eSceneTriangles& scene);

    // The largest difference between the shares that a bone has in the two; one that is in only one of them
    // has no share in the other.
    double Difference(const eSceneCorner& scene, const eExportVertex& vertex,
                      const eFileSubMesh& subMesh) const;

private:
    int BoneOf(std::uint8_t entry, const eFileSubMesh& subMesh) const;

    std::vector<int> bones_;  // by number in the file: that of the name in the scene, -1 where it has none
};

}  // namespace verify
