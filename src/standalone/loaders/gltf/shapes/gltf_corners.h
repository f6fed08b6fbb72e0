#pragma once

#include <cstdint>
#include <vector>

#include "standalone/loaders/gltf/gltf_import.h"

namespace standalone {

enum class eGltfTopology { Points, Lines, Triangles };

eGltfTopology TopologyOf(const tinygltf::Primitive& primitive);

// The vertex numbers of a primitive's triangles, three each, or of its line segments, two each, whether the
// file has them one by one, as strips, fans or loops. A number beyond the primitive's vertices is a problem
// at the place, and the result is empty; so is more than a file may unfold to.
std::vector<std::uint32_t> GltfCorners(eGltfImport& import, const tinygltf::Primitive& primitive,
                                       const std::string& place);

}  // namespace standalone
