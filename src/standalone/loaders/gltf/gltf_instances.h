#pragma once

#include <vector>

#include "standalone/loaders/gltf/gltf_import.h"

namespace standalone {

// Where EXT_mesh_gpu_instancing shows the mesh of a node, seen from the node; nothing for a node without it,
// and for one whose mesh has to stay at its node, which is told.
std::vector<ePlacement> GltfInstancesOf(const eGltfImport& import, int node);

}  // namespace standalone
