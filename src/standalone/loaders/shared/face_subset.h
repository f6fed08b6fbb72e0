#pragma once

#include <cstdint>
#include <vector>

#include "standalone/scene_data.h"

namespace standalone {

// The mesh of some of an object's faces, in the given order, with the vertices, map vertices, normals, vertex
// keys and skin weights that they use, in their old order.
eObjectData SubsetOf(const eObjectData& object, const std::vector<std::uint32_t>& faces);

}  // namespace standalone
