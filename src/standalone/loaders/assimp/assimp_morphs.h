#pragma once

#include "standalone/loaders/assimp/assimp_corners.h"

namespace standalone {

// The vertices of a node's mesh at each frame where a take keys its morph targets; empty where none does.
std::vector<eVertexKey> MakeAssimpVertexKeys(eAssimpImport& import, int node,
                                             const std::vector<const aiMesh*>& meshes,
                                             const eAssimpVertices& vertices,
                                             const std::vector<host::Point3>& rest);

}  // namespace standalone
