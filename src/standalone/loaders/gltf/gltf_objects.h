#pragma once

#include "standalone/loaders/gltf/gltf_import.h"

namespace standalone {

// Gives every node of the scene its object and material: a mesh, with its skin and its morph keys, a shape of
// lines, a primitive, a camera, a light, or a helper. A node that has several of them in the file keeps the
// mesh, and the others become nodes below it; the nodes are no longer depth first then.
void MakeGltfObjects(eGltfImport& import);

}  // namespace standalone
