#pragma once

#include "standalone/loaders/gltf/gltf_hierarchy.h"

namespace standalone {

// Packers give a mesh whose positions are whole numbers a nameless node of its own, which scales it back to
// size, below the node that the artist made. Such a carrier is taken out of the order where a node has just
// one: its mesh goes to the artist's node, whose properties speak of it.
void TakeOutMeshCarriers(const tinygltf::Model& model, const eJsonTree& json, eGltfHierarchy& hierarchy);

}  // namespace standalone
