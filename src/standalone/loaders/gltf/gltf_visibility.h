#pragma once

#include "standalone/loaders/gltf/gltf_import.h"

namespace standalone {

// Gives every node of the scene the visibility that KHR_node_visibility and the curves ask for. What is above
// a node hides it too: the host's nodes are seen each for themselves.
void SetGltfVisibility(eGltfImport& import);

}  // namespace standalone
