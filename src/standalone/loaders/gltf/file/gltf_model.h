#pragma once

#include <tiny_gltf.h>

#include "standalone/loaders/json/json_tree.h"

namespace standalone {

// The document as the library's records, filled from the tree of a checked file (gltf_schema.h,
// gltf_conditions.h), so that the text is read once. What the import doesn't read keeps its first value;
// buffers have no records, as their bytes are elsewhere (gltf_buffers.h), and extras are read in the tree.
tinygltf::Model ReadGltfModel(const eJsonTree& json);

}  // namespace standalone
