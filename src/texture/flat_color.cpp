#include "texture/flat_color.h"

#include <algorithm>

#include "texture/color_bits.h"

namespace {

struct eFlatEnds {
    std::uint8_t first;
    std::uint8_t second;
};

using eFlatTable = std::array<eFlatEnds, 256>;

constexpr int Magnitude(int number) {
    return number < 0 ? -number : number;
}

// How little the first third from a to b suits a value: the mean of its miss with the fraction and without
// it, since decoders do either, in thirds. Hardware may also be off by 3 percent of the way between the ends,
// so ends close together are preferred to slightly better ones far apart.
constexpr int FlatCost(int value, int a, int b) {
    const int exactMiss = Magnitude(2 * a + b - 3 * value);
    const int cutMiss = 3 * Magnitude((2 * a + b) / 3 - value);
    constexpr int missWeight = 11;
    return missWeight * (exactMiss + cutMiss) / 2 + Magnitude(a - b);
}

// Per byte value, the ends whose first third suits it best.
constexpr eFlatTable MakeFlatTable(std::size_t channel) {
    eFlatTable table{};
    const int highest = HighestBits(channel);
    for (int value = 0; value < 256; value++) {
        int least = FlatCost(255, 0, 0);
        // The first end counts double, so it lies near the value itself.
        constexpr int farthest = 4;
        const int nearest = value * highest / 255;
        for (int first = std::max(0, nearest - farthest); first <= std::min(highest, nearest + farthest);
             first++) {
            const int a = ExpandedBits(first, channel);
            const int below = std::clamp((3 * value - 2 * a) * highest / 255, 0, highest - 1);
            for (int second = below; second <= below + 1; second++) {
                const int cost = FlatCost(value, a, ExpandedBits(second, channel));
                if (cost < least) {
                    least = cost;
                    table[static_cast<std::size_t>(value)] = {static_cast<std::uint8_t>(first),
                                                              static_cast<std::uint8_t>(second)};
                }
            }
        }
    }
    return table;
}

constexpr ePerChannel<eFlatTable> flatTables = {MakeFlatTable(0), MakeFlatTable(1), MakeFlatTable(2)};

}  // namespace

std::uint64_t FlatColorBlock(const std::array<std::uint8_t, 3>& color) {
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    for (std::size_t channel = 0; channel < colorChannels; channel++) {
        const eFlatEnds ends = flatTables[channel][color[channel]];
        first = (first << channelBits[channel]) | ends.first;
        second = (second << channelBits[channel]) | ends.second;
    }
    constexpr std::uint64_t allFirstThird = 0xaaaaaaaa;
    constexpr std::uint64_t allSecondThird = 0xffffffff;
    if (first == second) {
        return first | (second << 16);
    }
    return first > second ? first | (second << 16) | (allFirstThird << 32)
                          : second | (first << 16) | (allSecondThird << 32);
}
