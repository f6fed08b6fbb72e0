// Colour blocks: the published layout, and the quality that normal maps must have.
#include "texture/color_block.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <random>
#include <vector>

#include "support/normal_maps.h"
#include "texture/alpha_block.h"
#include "texture/exact_alphas.h"

#define STB_DXT_STATIC
#define STB_DXT_IMPLEMENTATION
#include <stb/stb_dxt.h>

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

double PeerError(const eColors& colors) {
    std::array<std::uint8_t, 64> source{};
    for (std::size_t pixel = 0; pixel < blockPixels; pixel++) {
        std::copy(colors[pixel].begin(), colors[pixel].end(), &source[4 * pixel]);
    }
    eBlock block;
    stb_compress_dxt_block(block.data(), source.data(), 0, STB_DXT_HIGHQUAL);
    return WeightedError(colors, block);
}

// Would catch: codes turned round, ends changed over, channels mixed up: errors of tens of steps.
TEST(ColorBlock, ComesNearToTheColors) {
    for (const bool withRed : {true, false}) {
        double ours = 0;
        double peer = 0;
        for (const eColors& colors : ManyBlocks(withRed)) {
            ours += WeightedError(colors, Encode({colors})[0]);
            peer += PeerError(colors);
        }
        EXPECT_LT(ours, peer);
    }
}

// Would catch: a block of DXT1 whose ends stand in the order of the form with a transparent code.
TEST(ColorBlock, NeedsNoTransparentCode) {
    for (const eColors& colors : ManyBlocks(true)) {
        const eBlock block = Encode({colors})[0];
        ASSERT_EQ(WeightedError(colors, block, false), WeightedError(colors, block, true));
    }
}

// Groups without red take a shorter way: would catch that it, or the neighbours, change a block.
TEST(ColorBlock, EncodesEachLaneByItself) {
    const std::vector<eColors> blocks = ManyBlocks(false);
    const eColors red = ManyBlocks(true)[0];
    for (std::size_t first = 0; first + 15 < blocks.size(); first += 15) {
        std::vector<eColors> group(blocks.begin() + static_cast<std::ptrdiff_t>(first),
                                   blocks.begin() + static_cast<std::ptrdiff_t>(first + 15));
        const std::vector<eBlock> without = Encode(group);
        group.push_back(red);
        const std::vector<eBlock> with = Encode(group);
        for (std::size_t lane = 0; lane < without.size(); lane++) {
            ASSERT_EQ(without[lane], with[lane]);
            ASSERT_EQ(without[lane], Encode({group[lane]})[0]);
        }
    }
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

struct eMapErrors {
    double green = 0;
    double alpha = 0;       // after a decoder that cuts the values between the ends
    double exactAlpha = 0;  // after one that keeps their fractions

    void Add(const std::uint8_t* source, const std::uint8_t* dxt5) {
        const auto colors = DecodeColorBlock(dxt5 + 8, true);
        const auto alphas = DecodeAlphaBlock(dxt5);
        const auto exactAlphas = ExactAlphas(dxt5);
        for (std::size_t pixel = 0; pixel < blockPixels; pixel++) {
            green += std::pow(source[4 * pixel + 1] - colors[pixel][1], 2);
            alpha += std::pow(source[4 * pixel + 3] - alphas[pixel], 2);
            exactAlpha += std::pow(source[4 * pixel + 3] - exactAlphas[pixel], 2);
        }
    }
};

double Decibels(double peer, double ours) {
    return 10 * std::log10(peer / ours);
}

// What artists see of the encoder: would catch any change that makes normal maps coarser.
TEST(ColorBlock, KeepsNormalMapsFinerThanThePeer) {
    for (const support::eNormalMap& map : support::MakeNormalMaps(256)) {
        SCOPED_TRACE(map.name);
        eMapErrors ours;
        eMapErrors peer;
        const std::size_t blockCount = BlocksAlong(map.image.width) * BlocksAlong(map.image.height);
        for (std::size_t first = 0; first < blockCount; first += groupBlocks) {
            const eBlockGroup group = GatherBlocks(map.image, first);
            const eGroupWords alphas = EncodeAlphaBlocks(group.channels[3]);
            const eGroupWords colors = EncodeColorBlocks(group, weights);
            for (std::size_t lane = 0; lane < groupBlocks; lane++) {
                std::array<std::uint8_t, 64> source;
                for (std::size_t i = 0; i < source.size(); i++) {
                    source[i] = group.channels[i % 4][i / 4][lane];
                }
                std::array<std::uint8_t, 16> block;
                std::memcpy(block.data(), &alphas[lane], 8);
                std::memcpy(block.data() + 8, &colors[lane], 8);
                ours.Add(source.data(), block.data());
                stb_compress_dxt_block(block.data(), source.data(), 1, STB_DXT_HIGHQUAL);
                peer.Add(source.data(), block.data());
            }
        }
        EXPECT_GE(Decibels(peer.green, ours.green), 0.0);
        EXPECT_GE(Decibels(peer.alpha, ours.alpha), 1.0);
        EXPECT_GE(Decibels(peer.exactAlpha, ours.exactAlpha), 1.0);
    }
}

}  // namespace
