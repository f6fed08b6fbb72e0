#pragma once

#include <vector>

#include "standalone/loaders/gltf/shapes/gltf_vertices.h"

namespace standalone {

// A skin of the file as it acts on the mesh of one node.
struct eGltfSkin {
    eSkinModifier modifier;
    // From the mesh's own space, where the file has its vertices, to the object space of the node. The file
    // ignores where a skinned mesh's node stands; the host does not. Behind this matrix the undeformed mesh
    // lands where the bind pose has it.
    host::Matrix3 placement;
    bool isPlaced = false;  // `placement` is more than the identity
};

// `worlds` are those of GltfWorldMatrices.
eGltfSkin ReadGltfSkin(eGltfImport& import, int node, const std::vector<host::Matrix3>& worlds);

// Reads the influences of all sets on the vertices into the modifier. Weights of 0 are left out, and a joint
// that stands twice counts once with both weights.
void ReadGltfInfluences(eGltfImport& import, const eGltfVertices& vertices, eSkinModifier& skin);

}  // namespace standalone
