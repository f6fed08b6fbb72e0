// Colour blocks: the published layout, and that the encoder chooses as it did.
#include "texture/color_block.h"

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

constexpr eColorWeights weights = {0.3086F, 0.6094F, 0.0820F};

using eColors = std::array<std::array<std::uint8_t, 3>, blockPixels>;
using eBlock = std::array<std::uint8_t, 8>;

std::vector<eBlock> Encode(const std::vector<eColors>& blocks) {
    eBlockGroup group{};
    for (std::size_t lane = 0; lane < groupBlocks; lane++) {
        for (std::size_t pixel = 0; pixel < blockPixels; pixel++) {
            for (std::size_t channel = 0; channel < 3; channel++) {
                group.channels[channel][pixel][lane] =
                    blocks[std::min(lane, blocks.size() - 1)][pixel][channel];
            }
        }
    }
    const eGroupWords words = EncodeColorBlocks(group, weights);
    std::vector<eBlock> encoded(blocks.size());
    for (std::size_t i = 0; i < blocks.size(); i++) {
        std::memcpy(encoded[i].data(), &words[i], 8);
    }
    return encoded;
}

double WeightedError(const eColors& colors, const eBlock& block, bool alwaysFour = true) {
    const auto decoded = DecodeColorBlock(block.data(), alwaysFour);
    double sum = 0;
    for (std::size_t pixel = 0; pixel < blockPixels; pixel++) {
        for (std::size_t channel = 0; channel < 3; channel++) {
            const double miss = double{1} * colors[pixel][channel] - decoded[pixel][channel];
            sum += static_cast<double>(weights[channel]) * miss * miss;
        }
    }
    return sum;
}

// Gradients between two colours with noise.
std::vector<eColors> ManyBlocks(bool withRed) {
    std::mt19937 random(17);
    std::vector<eColors> blocks(2000);
    for (eColors& block : blocks) {
        const std::array<int, 3> from = {static_cast<int>(random() % 256), static_cast<int>(random() % 256),
                                         static_cast<int>(random() % 256)};
        const std::array<int, 3> to = {static_cast<int>(random() % 256), static_cast<int>(random() % 256),
                                       static_cast<int>(random() % 256)};
        const int noise = 1 + static_cast<int>(random() % 40);
        for (std::array<std::uint8_t, 3>& color : block) {
            const int part = static_cast<int>(random() % 256);
            for (std::size_t channel = withRed ? 0 : 1; channel < 3; channel++) {
                const int value = from[channel] + (to[channel] - from[channel]) * part / 255 +
                                  static_cast<int>(random() % 64) % noise;
                color[channel] = static_cast<std::uint8_t>(std::clamp(value, 0, 255));
            }
        }
    }
    return blocks;
}

// Would catch: any other choice of ends or codes, and a lane that hangs on its neighbours. What another
// choice costs or saves tells the benchmark of textures; files must come out as they did, to the byte.
TEST(ColorBlock, ComesOutAsItDid) {
    std::uint64_t sum = 0;
    for (const bool withRed : {false, true}) {
        const std::vector<eColors> blocks = ManyBlocks(withRed);
        for (std::size_t first = 0; first + 15 < blocks.size(); first += 15) {
            const auto begin = blocks.begin() + static_cast<std::ptrdiff_t>(first);
            std::vector<eColors> group(begin, begin + 15);
            group.push_back(blocks[first % 7]);
            const std::vector<eBlock> encoded = Encode(group);
            ASSERT_EQ(encoded[9], Encode({group[9]})[0]);
            for (std::size_t lane = 0; lane < 15; lane++) {
                sum = support::Checksum(encoded[lane], sum);
                const double error = WeightedError(group[lane], encoded[lane]);
                ASSERT_EQ(error, WeightedError(group[lane], encoded[lane], false)) << "a transparent code";
            }
        }
    }
    EXPECT_EQ(sum, 3813382211004141341U);
}

// Would catch: a hole in the tables for blocks of one colour.
TEST(ColorBlock, KeepsOneColorWithinOne) {
    for (int value = 0; value < 256; value++) {
        eColors flat;
        const std::array<int, 3> color = {value, 255 - value, (value * 7) % 256};
        for (auto& pixel : flat) {
            for (std::size_t channel = 0; channel < 3; channel++) {
                pixel[channel] = static_cast<std::uint8_t>(color[channel]);
            }
        }
        const auto decoded = DecodeColorBlock(Encode({flat})[0].data(), false);
        for (std::size_t channel = 0; channel < 3; channel++) {
            ASSERT_LE(std::abs(decoded[9][channel] - color[channel]), 1) << value << " channel " << channel;
        }
        EXPECT_EQ(decoded[0], decoded[15]);
        EXPECT_EQ(decoded[0][3], 255);
    }
}

// The published layout, by hand.
TEST(ColorBlock, DecodesBothForms) {
    const eBlock thirds = {0x00, 0xf8, 0x1f, 0x00, 0b11100100, 0, 0, 0b10000000};
    const auto four = DecodeColorBlock(thirds.data(), false);
    EXPECT_THAT(four[0], testing::ElementsAre(255, 0, 0, 255));
    EXPECT_THAT(four[1], testing::ElementsAre(0, 0, 255, 255));
    EXPECT_THAT(four[2], testing::ElementsAre(170, 0, 85, 255));
    EXPECT_THAT(four[3], testing::ElementsAre(85, 0, 170, 255));
    EXPECT_EQ(four[15], four[2]);
    const eBlock halves = {0x1f, 0x00, 0x00, 0xf8, 0b11100100, 0, 0, 0};
    const auto three = DecodeColorBlock(halves.data(), false);
    EXPECT_THAT(three[2], testing::ElementsAre(127, 0, 127, 255));
    EXPECT_THAT(three[3], testing::ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(DecodeColorBlock(halves.data(), true)[3], testing::ElementsAre(170, 0, 85, 255));
}

}  // namespace
