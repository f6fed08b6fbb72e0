#pragma once

#include "standalone/loaders/gltf/gltf_import.h"

namespace standalone {

// Makes a record of each node of the scene shown: name, extras, place, tree. Objects come later.
void MakeGltfNodes(eGltfImport& import);

// The place of a node at rest, seen from its parent, in the host's axes; it has no axes of its own.
eTransform GltfRestTransform(const eGltfImport& import, int node);

// Where the nodes of the file stand in the world at rest, in the host's axes, none of them with axes of its
// own: what bind poses are held against. By number in the file; nodes outside the scene stand at the
// identity.
std::vector<host::Matrix3> GltfWorldMatrices(const eGltfImport& import);

}  // namespace standalone
