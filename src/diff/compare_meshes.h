#pragma once

#include <cstdint>
#include <span>

#include "diff/change.h"

namespace diff {

// Meshes by their names: triangles, bounds, materials, bones and vertices. Vertices are compared one by one
// where the triangles join the same numbers, else the triangles are looked up by their places. The problem
// says why a side can't be read, or what is broken in a mesh, which is left aside; it is empty else.
void CompareMeshes(std::span<const std::uint8_t> before, std::span<const std::uint8_t> after,
                   const eTolerances& tolerances, eChanges& changes, eBilingual& problem);

}  // namespace diff
