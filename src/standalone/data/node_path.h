#pragma once

#include <cstddef>
#include <string>

#include "standalone/scene_data.h"

namespace standalone {

// The names of the node and of those above it, from the topmost down, with slashes between: "tank/hull". Code
// page 1251.
std::string PathOfNode(const eSceneData& scene, std::size_t node);

}  // namespace standalone
