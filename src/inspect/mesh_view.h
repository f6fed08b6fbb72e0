#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "inspect/description.h"

namespace inspect {

// A mesh file: its table, and per mesh the bounds, the skin, the sub-meshes with their formats in words and
// palettes, sizes, what a vertex cache of 24 makes of the order of the triangles, and whatever is wrong with
// the numbers. A problem, with its byte offset, if the file can't be read.
eDescription DescribeMeshes(std::span<const std::uint8_t> bytes, std::string& problem);

}  // namespace inspect
