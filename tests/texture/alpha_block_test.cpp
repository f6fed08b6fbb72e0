// Alpha blocks: the search in lanes against a plain one, and what must hold whatever the search does.
#include "texture/alpha_block.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

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

// The search as the header tells it, one block at a time, with whole palettes and no tricks.
class ePlainSearch {
public:
    explicit ePlainSearch(const eValues& blockValues) : values(blockValues) {}

    eBlock Block() {
        const auto [lowest, highest] = std::ranges::minmax(values);
        const int low = std::min<int>(lowest, 248);
        SearchForm(low, std::max<int>(highest, low + 7), true);
        if (bestError > 0 && (lowest <= alphaEdge || highest >= 255 - alphaEdge)) {
            const eEnds eight = best;
            const int eightError = bestError;
            bestError = INT_MAX;
            SearchInner();
            if (bestError >= eightError) {
                best = eight;
                hasEight = true;
            }
        }
        return Written();
    }

private:
    struct eEnds {
        int low;
        int high;
    };

    void SearchInner() {
        int low = 255;
        int high = 0;
        for (const int value : values) {
            if (value > alphaEdge && value < 255 - alphaEdge) {
                low = std::min(low, value);
                high = std::max(high, value);
            }
        }
        SearchForm(std::min(low, high), high, false);
    }

    void SearchForm(int low, int high, bool eight) {
        hasEight = eight;
        const int range = high - low;
        for (const int lowInset : {0, (range * 13 + 128) / 256, (range * 26 + 128) / 256}) {
            for (const int highInset : {0, (range * 13 + 128) / 256, (range * 26 + 128) / 256}) {
                Try({low + lowInset, high - highInset});
            }
        }
        if (eight) {
            Try(Fitted());
        }
        const eEnds centre = best;
        Try({std::max(centre.low - 1, 0), centre.high});
        Try({std::min(centre.low + 1, 255), centre.high});
        Try({centre.low, std::max(centre.high - 1, 0)});
        Try({centre.low, std::min(centre.high + 1, 255)});
    }

    // The eight values upwards.
    std::array<int, 8> Palette(const eEnds& ends) const {
        std::array<int, 8> palette{0, 0, 0, 0, 0, 0, 0, 255};
        const int steps = hasEight ? 7 : 5;
        for (int step = 0; step <= steps; step++) {
            palette[static_cast<std::size_t>(step + (hasEight ? 0 : 1))] =
                ends.low + step * (ends.high - ends.low) / steps;
        }
        return palette;
    }

    // The lower one of two that are equally near.
    static std::size_t Nearest(const std::array<int, 8>& palette, int value) {
        std::size_t entry = 0;
        while (entry + 1 < palette.size() && 2 * value > palette[entry] + palette[entry + 1]) {
            entry++;
        }
        return entry;
    }

    void Try(eEnds ends) {
        if (hasEight) {
            ends.low = std::min(ends.low, 254);
            ends.high = std::max(ends.high, ends.low + 1);
        } else {
            ends.high = std::max(ends.high, ends.low);
        }
        const std::array<int, 8> palette = Palette(ends);
        int error = 0;
        for (const int value : values) {
            const int miss = value - palette[Nearest(palette, value)];
            error += miss * miss;
        }
        if (error < bestError) {
            bestError = error;
            best = ends;
        }
    }

    eEnds Fitted() const {
        const std::array<int, 8> palette = Palette(best);
        float entries = 0;
        float squares = 0;
        float sum = 0;
        float products = 0;
        for (const std::uint8_t value : values) {
            const auto entry = static_cast<float>(Nearest(palette, value));
            entries += entry;
            squares += entry * entry;
            sum += value;
            products += entry * value;
        }
        const float determinant = 16 * squares - entries * entries;
        const float slope = (16 * products - entries * sum) / std::max(determinant, 1.0F);
        const float start = (sum - slope * entries) * (1.0F / 16.0F);
        const auto byte = [](float value) {
            return static_cast<int>(std::clamp(value, 0.0F, 255.0F) + 0.5F);
        };
        return {byte(start), byte(start + 7.0F * slope)};
    }

    eBlock Written() const {
        eBlock block{};
        block[0] = static_cast<std::uint8_t>(hasEight ? best.high : best.low);
        block[1] = static_cast<std::uint8_t>(hasEight ? best.low : best.high);
        constexpr std::array<std::uint64_t, 8> eightCodes = {1, 7, 6, 5, 4, 3, 2, 0};
        constexpr std::array<std::uint64_t, 8> sixCodes = {6, 0, 2, 3, 4, 5, 1, 7};
        std::uint64_t codes = 0;
        for (std::size_t i = 0; i < values.size(); i++) {
            const std::size_t entry = Nearest(Palette(best), values[i]);
            codes |= (hasEight ? eightCodes : sixCodes)[entry] << (3 * i);
        }
        std::memcpy(block.data() + 2, &codes, 6);
        return block;
    }

    eValues values;
    bool hasEight = true;
    eEnds best{0, 0};
    int bestError = INT_MAX;
};

// Blocks of many kinds: noise, gradients, steps, masks with 0 and 255 and soft edges.
std::vector<eValues> ManyBlocks() {
    std::mt19937 random(11);
    std::vector<eValues> blocks;
    for (int round = 0; round < 4000; round++) {
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

// Would catch: a lane that does other arithmetic than its neighbours or hangs on them, a division that isn't
// exact, sums that run over, codes or ends in the wrong order.
TEST(AlphaBlock, FindsWhatThePlainSearchFinds) {
    const std::vector<eValues> blocks = ManyBlocks();
    int sixValued = 0;
    for (std::size_t first = 0; first < blocks.size(); first += groupBlocks) {
        const std::vector<eValues> group(blocks.begin() + static_cast<std::ptrdiff_t>(first),
                                         blocks.begin() + static_cast<std::ptrdiff_t>(first + groupBlocks));
        const std::vector<eBlock> encoded = Encode(group);
        for (std::size_t lane = 0; lane < groupBlocks; lane++) {
            ASSERT_EQ(encoded[lane], ePlainSearch(group[lane]).Block()) << "block " << first + lane;
            sixValued += encoded[lane][0] <= encoded[lane][1] ? 1 : 0;
        }
    }
    EXPECT_GT(sixValued, 100);
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
