// Colour blocks of one colour. The ends of a block are coarse, but the third between two of them comes within
// one of any byte.
#pragma once

#include <array>
#include <cstdint>

// The eight bytes of the block for a colour R, G, B; the first byte of the file in the lowest bits.
std::uint64_t FlatColorBlock(const std::array<std::uint8_t, 3>& color);
