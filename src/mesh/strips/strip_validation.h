#pragma once

#include <cstdint>
#include <span>

// True if each triangle of `output` that is not degenerate stands in `input` with the same three indices in
// the same cyclic order. Both hold three indices per triangle. Linear, by hashing.
bool ValidateTriangles(std::span<const std::uint16_t> input, std::span<const std::uint16_t> output);
