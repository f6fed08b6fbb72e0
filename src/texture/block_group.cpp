#include "texture/block_group.h"

#include <algorithm>
#include <cstring>

#include "texture/pixel_image.h"

namespace {

using eMatrix = std::array<eByteLanes, 16>;

// Byte c of row r becomes byte r of row c. Each of the four rounds interleaves row n with row n + 8, which
// turns the eight bits of a byte's place (row, column) by one.
eMatrix Transposed(eMatrix rows) {
    for (int round = 0; round < 4; round++) {
        eMatrix next;
        for (std::size_t row = 0; row < 8; row++) {
            next[2 * row] = __builtin_shufflevector(rows[row], rows[row + 8], 0, 16, 1, 17, 2, 18, 3, 19, 4,
                                                    20, 5, 21, 6, 22, 7, 23);
            next[2 * row + 1] = __builtin_shufflevector(rows[row], rows[row + 8], 8, 24, 9, 25, 10, 26, 11,
                                                        27, 12, 28, 13, 29, 14, 30, 15, 31);
        }
        rows = next;
    }
    return rows;
}

// Where a block lies and how much of it the image has.
struct eBlockPlace {
    std::size_t x;
    std::size_t y;
    std::size_t columns;
    std::size_t rows;
};

eBlockPlace PlaceOfBlock(const ePixelImage& image, std::size_t block) {
    const std::size_t across = BlocksAlong(image.width);
    const std::size_t x = 4 * (block % across);
    const std::size_t y = 4 * (block / across);
    return {x, y, std::min<std::size_t>(4, image.width - x), std::min<std::size_t>(4, image.height - y)};
}

// Four pixels of a block's row.
eByteLanes BlockRow(const ePixelImage& image, const eBlockPlace& place, std::size_t row) {
    const std::uint8_t* source = image.Pixel(place.x, place.y + row % place.rows);
    eByteLanes pixels;
    if (place.columns == 4) {
        std::memcpy(&pixels, source, sizeof(pixels));
        return pixels;
    }
    std::array<std::uint8_t, 16> repeated;
    for (std::size_t column = 0; column < 4; column++) {
        std::memcpy(repeated.data() + 4 * column, source + 4 * (column % place.columns), 4);
    }
    std::memcpy(&pixels, repeated.data(), sizeof(pixels));
    return pixels;
}

}  // namespace

eBlockGroup GatherBlocks(const ePixelImage& image, std::span<const std::size_t> blocks) {
    std::array<eBlockPlace, groupBlocks> places;
    for (std::size_t lane = 0; lane < groupBlocks; lane++) {
        places[lane] = PlaceOfBlock(image, blocks[std::min(lane, blocks.size() - 1)]);
    }

    eBlockGroup group;
    for (std::size_t row = 0; row < 4; row++) {
        eMatrix rows;
        for (std::size_t lane = 0; lane < groupBlocks; lane++) {
            rows[lane] = BlockRow(image, places[lane], row);
        }
        rows = Transposed(rows);
        for (std::size_t column = 0; column < 4; column++) {
            for (std::size_t channel = 0; channel < 4; channel++) {
                group.channels[channel][4 * row + column] = rows[4 * column + channel];
            }
        }
    }
    return group;
}

eGroupWords WordsOfPlanes(const std::array<eByteLanes, 8>& planes) {
    eMatrix rows{};
    std::copy(planes.begin(), planes.end(), rows.begin());
    rows = Transposed(rows);
    eGroupWords words;
    for (std::size_t lane = 0; lane < groupBlocks; lane++) {
        std::memcpy(&words[lane], &rows[lane], sizeof(words[lane]));
    }
    return words;
}
