#pragma once

#include "standalone/loaders/gltf/file/gltf_buffers.h"
#include "standalone/loaders/gltf/file/gltf_model.h"

namespace standalone {

// Unpacks the compressed views and meshes of a checked file into buffers of their own, which the model's
// views and accessors then name; every other part stays in its place. A broken stream is a problem; so is a
// view without bytes that no extension gives any.
void UnpackGltf(const eJsonTree& json, tinygltf::Model& model, eGltfBuffers& buffers, eImportReport& report);

}  // namespace standalone
