#pragma once

#include "standalone/loaders/gltf/gltf_import.h"

namespace standalone {

// The light of a node that names one (KHR_lights_punctual); -1 for none.
int GltfLightOf(const tinygltf::Node& node);

// A light of the file. Its brightness in physical units has no counterpart: the multiplier is 1 where the
// extras of the light, or else of its node, say no other.
eLightObject MakeGltfLight(const eGltfImport& import, int node, int light);

}  // namespace standalone
