#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "mesh/strips/strip_list.h"

// The order in which the pieces are drawn: after each the one that finds the most of its corners in a
// first-in-first-out cache of `cacheSize` vertices, among those that touch the piece drawn last. No vertex is
// above `maxIndex`.
std::vector<std::uint32_t> OrderPieces(const eStripList& pieces, std::size_t cacheSize, int maxIndex);
