#pragma once

#include "standalone/loaders/assimp/assimp_import.h"

namespace standalone {

// The materials of the scene, and the object and material of every node. Nodes that show the same meshes in
// the same way share one object, unless bones or morph targets move it.
void MakeAssimpObjects(eAssimpImport& import);

}  // namespace standalone
