// Alpha blocks: that each pixel has its nearest value, and that the encoder chooses as it did.
#include "texture/alpha_block.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <random>
#include <vector>

#include "support/checksum.h"

namespace {

using eValues = std::array<std::uint8_t, blockPixels>;
using eBlock = std::array<std::uint8_t, 8>;

eGroupChannel InLanes(const std::vector<eValues>& blocks) {
    eGroupChannel channel;
    for (std::size_t pixel = 0; pixel < blockPixels; pixel++) {
        for (std::size_t lane = 0; lane < groupBlocks; lane++) {
            channel[pixel][lane] = blocks[std::min(lane, blocks.size() - 1)][pixel];
        }
    }
    return channel;
}

// Up to sixteen blocks at once.
std::vector<eBlock> Encode(const std::vector<eValues>& blocks) {
    const eGroupWords words = EncodeAlphaBlocks(InLanes(blocks));
    std::vector<eBlock> encoded(blocks.size());
    for (std::size_t i = 0; i < blocks.size(); i++) {
        std::memcpy(encoded[i].data(), &words[i], 8);
    }
    return encoded;
}

int SquaredError(const eValues& values, const eBlock& block) {
    const eValues decoded = DecodeAlphaBlock(block.data());
    int sum = 0;
    for (std::size_t i = 0; i < values.size(); i++) {
        sum += (values[i] - decoded[i]) * (values[i] - decoded[i]);
    }
    return sum;
}

// The error of a block with these ends where each pixel has the nearest value.
int NearestError(const eValues& values, std::uint8_t a, std::uint8_t b) {
    const auto palette = AlphaBlockValues(a, b);
    int sum = 0;
    for (const int value : values) {
        int nearest = 255;
        for (const int entry : palette) {
            nearest = std::min(nearest, std::abs(value - entry));
        }
        sum += nearest * nearest;
    }
    return sum;
}

// Blocks of many kinds: noise, gradients, steps, masks with 0 and 255 and soft edges.
std::vector<eValues> ManyBlocks(int count) {
    std::mt19937 random(11);
    std::vector<eValues> blocks;
    for (int round = 0; round < count; round++) {
        const int base = static_cast<int>(random() % 256);
        const int across = static_cast<int>(random() % 41) - 20;
        const int down = static_cast<int>(random() % 41) - 20;
        const int noise = 1 + static_cast<int>(random() % (round % 3 == 0 ? 256 : 12));
        const std::uint_fast32_t mask = round % 5 == 0 ? random() : 0;
        eValues block;
        for (std::size_t i = 0; i < block.size(); i++) {
            const int place = static_cast<int>(i);
            const int value =
                base + place % 4 * across + place / 4 * down + static_cast<int>(random()) % noise;
            block[i] = static_cast<std::uint8_t>(std::clamp(value, 0, 255));
            if ((mask >> i & 1) != 0) {
                block[i] =
                    static_cast<std::uint8_t>((mask >> 16 & 1) != 0 ? 255 - (mask >> 17 & 3) : random() % 3);
            }
        }
        blocks.push_back(block);
    }
    return blocks;
}

// Would catch: a lane that hangs on its neighbours, a pixel whose code is not that of the nearest value, and
// codes in the wrong order.
TEST(AlphaBlock, GivesEachPixelItsNearestValue) {
    const std::vector<eValues> blocks = ManyBlocks(4000);
    int sixValued = 0;
    std::uint64_t sum = 0;
    for (std::size_t first = 0; first < blocks.size(); first += groupBlocks) {
        const std::vector<eValues> group(blocks.begin() + static_cast<std::ptrdiff_t>(first),
                                         blocks.begin() + static_cast<std::ptrdiff_t>(first + groupBlocks));
        const std::vector<eBlock> encoded = Encode(group);
        for (std::size_t lane = 0; lane < groupBlocks; lane++) {
            const eBlock& block = encoded[lane];
            sum = support::Checksum(block, sum);
            ASSERT_EQ(block, Encode({group[lane]})[0]) << "block " << first + lane;
            sixValued += block[0] <= block[1] ? 1 : 0;
            ASSERT_EQ(SquaredError(group[lane], block), NearestError(group[lane], block[0], block[1]));
        }
    }
    EXPECT_GT(sixValued, 100);
    EXPECT_EQ(sum, 13100359787318534887U) << "other ends are chosen than before";
}

// Would catch: a flat normal that comes out one off, the ends at 0 and 255.
TEST(AlphaBlock, KeepsSmallRangesExact) {
    std::mt19937 random(5);
    for (unsigned base = 0; base < 256; base++) {
        std::vector<eValues> blocks(2);
        blocks[0].fill(static_cast<std::uint8_t>(base));
        for (std::uint8_t& value : blocks[1]) {
            value = static_cast<std::uint8_t>(std::min(base + random() % 8, 255UL));
        }
        const std::vector<eBlock> encoded = Encode(blocks);
        EXPECT_EQ(SquaredError(blocks[0], encoded[0]), 0) << base;
        EXPECT_EQ(SquaredError(blocks[1], encoded[1]), 0) << base;
    }
}

// A cut-out mask with an edge needs the fixed values: would catch that the six-value form is never taken.
TEST(AlphaBlock, KeepsAMaskAndItsEdge) {
    const eValues mask = {0, 0, 0, 100, 0, 0, 110, 255, 0, 120, 255, 255, 130, 255, 255, 255};
    EXPECT_LE(SquaredError(mask, Encode({mask})[0]), 4 * 4);
    const eValues hard = {0, 0, 255, 255, 0, 0, 255, 255, 0, 0, 255, 255, 0, 0, 255, 255};
    EXPECT_EQ(SquaredError(hard, Encode({hard})[0]), 0);
}

// The published layout, by hand.
TEST(AlphaBlock, DecodesBothForms) {
    const eBlock eight = {80, 10, 0b10001000, 0b11000110, 0b11111010, 0, 0, 0};
    EXPECT_THAT(DecodeAlphaBlock(eight.data()),
                testing::ElementsAre(80, 10, 70, 60, 50, 40, 30, 20, 80, 80, 80, 80, 80, 80, 80, 80));
    const eBlock six = {10, 60, 0b10001000, 0b11000110, 0b11111010, 0, 0, 0};
    EXPECT_THAT(DecodeAlphaBlock(six.data()),
                testing::ElementsAre(10, 60, 20, 30, 40, 50, 0, 255, 10, 10, 10, 10, 10, 10, 10, 10));
}

}  // namespace
