// Sixteen blocks of 4 by 4 pixels side by side in lanes: the form in which the block encoders work.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "texture/lanes.h"

struct ePixelImage;

inline constexpr std::size_t groupBlocks = 16;
inline constexpr std::size_t blockPixels = 16;

// One channel of a group: a vector per pixel of the block, row after row; lane n belongs to block n.
using eGroupChannel = std::array<eByteLanes, blockPixels>;

// R, G, B, A.
struct eBlockGroup {
    std::array<eGroupChannel, 4> channels;
};

// The eight bytes of an encoded block each, the first byte of the file in the lowest bits.
using eGroupWords = std::array<std::uint64_t, groupBlocks>;

// How many blocks an image has across or down.
inline std::size_t BlocksAlong(unsigned pixels) {
    return (std::size_t{pixels} + 3) / 4;
}

// Reads up to sixteen blocks, at least one, by their numbers counted row after row. Where a block reaches
// over the image's edge its own pixels are repeated, so that none of them weighs much more than another.
// Lanes behind the last block repeat that block.
eBlockGroup GatherBlocks(const ePixelImage& image, std::span<const std::size_t> blocks);

// Lane n of byte plane b becomes byte b of word n.
eGroupWords WordsOfPlanes(const std::array<eByteLanes, 8>& planes);
