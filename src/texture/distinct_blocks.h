// Pictures repeat themselves: a quarter to two fifths of the blocks of a painted normal map have been there
// before in the same strip, flat ones above all. Each kind of block is encoded once.
#pragma once

#include <cstddef>
#include <vector>

#include "texture/pixel_image.h"

struct eDistinctBlocks {
    // Those that are unlike the others, by their numbers in the image, counted row after row.
    std::vector<std::size_t> blocks;
    // By block of the image: the place of its like among them.
    std::vector<std::size_t> placeOf;
};

// Misses some that are alike: it remembers one block for each value of a hash. Blocks that reach over the
// edge of the image count as unlike all others. Cost: about 10 ns a block.
eDistinctBlocks FindDistinctBlocks(const ePixelImage& image);
