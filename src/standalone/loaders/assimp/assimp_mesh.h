#pragma once

#include "standalone/loaders/assimp/assimp_corners.h"

namespace standalone {

// The object of a node that shows meshes: a triangle mesh with normals, map channels, vertex colours, skin
// and vertex keys; splines where there are lines only. The points are in the node's space in the scene.
eObjectData MakeAssimpMeshObject(eAssimpImport& import, int node);

}  // namespace standalone
