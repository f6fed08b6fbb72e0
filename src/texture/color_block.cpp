#include "texture/color_block.h"

#include <algorithm>
#include <cstddef>

#include "texture/color_bits.h"
#include "texture/color_line_search.h"
#include "texture/flat_color.h"

namespace {

// The first or, at place 3, the second end of the line, as a number of 16 bits.
eIntLanes PackedEnd(const eQuadColors& colors, const eColorLine& line, float place) {
    eIntLanes packed{};
    for (std::size_t channel = 0; channel < colorChannels; channel++) {
        const eFloatLanes offset = line.first[channel] + place * line.step[channel];
        packed = (packed << channelBits[channel]) | EndBits(colors, channel, offset);
    }
    return packed;
}

// The codes of eight pixels, 0 to 3 along the line written as 0, 2, 3, 1; along the turned line where turned
// is set.
template <std::size_t firstChannel>
eWordLanes PackedCodes(const eLineSearch<firstChannel>& search, const eWordProjection& projection,
                       eWordLanes turned, std::size_t firstPixel) {
    eWordLanes packed{};
    for (std::size_t pixel = firstPixel + 8; pixel-- > firstPixel;) {
        const eWordLanes onLine = search.Code(projection, pixel);
        const eWordLanes code = Select(turned, 3 - onLine, onLine);
        packed = (packed << 2) | (((code ^ (code >> 1)) & 1) << 1) | (code >> 1);
    }
    return packed;
}

// The larger colour stands first in a block; where that is the line's second end, the line is turned.
template <std::size_t firstChannel>
void EncodeOctet(const eOctetColors& octet, const eColorWeights& weights, std::uint64_t* words) {
    eLineSearch<firstChannel> search(octet, weights);
    const ePerQuad<eColorLine> lines = search.BestLines();
    const ePerQuad<eQuadColors> colors = {ColorsOfQuad<0>(octet), ColorsOfQuad<1>(octet)};
    ePerQuad<eIntLanes> ends;
    ePerQuad<eIntLanes> isTurned;
    for (std::size_t quad = 0; quad < octetQuads; quad++) {
        const eIntLanes first = PackedEnd(colors[quad], lines[quad], 0.0F);
        const eIntLanes second = PackedEnd(colors[quad], lines[quad], 3.0F);
        ends[quad] = Max(first, second) | (Min(first, second) << 16);
        isTurned[quad] = first < second;
    }
    const eWordProjection projection = search.ProjectionOf(lines);
    const eWordLanes turned = NarrowInts(isTurned[0], isTurned[1]);
    const eWordLanes upperCodes = PackedCodes(search, projection, turned, 0);
    const eWordLanes lowerCodes = PackedCodes(search, projection, turned, 8);
    for (std::size_t lane = 0; lane < octetBlocks; lane++) {
        const eIntLanes& quadEnds = ends[lane / quadBlocks];
        words[lane] = static_cast<std::uint32_t>(quadEnds[lane % quadBlocks]) |
                      (std::uint64_t{static_cast<std::uint16_t>(upperCodes[lane])} << 32) |
                      (std::uint64_t{static_cast<std::uint16_t>(lowerCodes[lane])} << 48);
    }
}

// The lanes whose values are all the same.
eByteLanes IsConstant(const eGroupChannel& values) {
    eByteLanes differs{};
    for (const eByteLanes value : values) {
        differs |= value ^ values[0];
    }
    return reinterpret_cast<eByteLanes>(differs == 0);
}

eColorWeights LegalWeights(const eColorWeights& weights) {
    eColorWeights legal;
    for (std::size_t channel = 0; channel < colorChannels; channel++) {
        legal[channel] = weights[channel] > 0.0F ? std::min(weights[channel], 1e3F) : 0.0F;
    }
    return legal;
}

bool RedIsZero(const eBlockGroup& group) {
    eByteLanes any{};
    for (const eByteLanes value : group.channels[0]) {
        any |= value;
    }
    return !AnyLane(any);
}

}  // namespace

eGroupWords EncodeColorBlocks(const eBlockGroup& group, const eColorWeights& weights) {
    const eColorWeights legal = LegalWeights(weights);
    const bool redIsZero = RedIsZero(group);
    eGroupWords words{};
    const eByteLanes flat =
        IsConstant(group.channels[0]) & IsConstant(group.channels[1]) & IsConstant(group.channels[2]);
    if (AnyLane(~flat)) {
        for (std::size_t octet = 0; octet < groupBlocks / octetBlocks; octet++) {
            const eOctetColors colors = ColorsOfOctet(group, octet);
            if (redIsZero) {
                EncodeOctet<1>(colors, legal, words.data() + octet * octetBlocks);
            } else {
                EncodeOctet<0>(colors, legal, words.data() + octet * octetBlocks);
            }
        }
    }
    for (std::size_t lane = 0; lane < groupBlocks; lane++) {
        if (flat[lane] != 0) {
            words[lane] = FlatColorBlock(
                {group.channels[0][0][lane], group.channels[1][0][lane], group.channels[2][0][lane]});
        }
    }
    return words;
}

std::array<std::array<std::uint8_t, 4>, 4> ColorBlockValues(const std::uint8_t* block, bool alwaysFour) {
    const unsigned first = block[0] | (unsigned{block[1]} << 8);
    const unsigned second = block[2] | (unsigned{block[3]} << 8);
    const bool hasThirds = alwaysFour || first > second;
    std::array<std::array<std::uint8_t, 4>, 4> values{};
    unsigned shift = 16;
    for (std::size_t channel = 0; channel < colorChannels; channel++) {
        shift -= static_cast<unsigned>(channelBits[channel]);
        const auto mask = static_cast<unsigned>(HighestBits(channel));
        const unsigned a = ExpandedBits((first >> shift) & mask, channel);
        const unsigned b = ExpandedBits((second >> shift) & mask, channel);
        values[0][channel] = static_cast<std::uint8_t>(a);
        values[1][channel] = static_cast<std::uint8_t>(b);
        values[2][channel] = static_cast<std::uint8_t>(hasThirds ? (2 * a + b) / 3 : (a + b) / 2);
        values[3][channel] = static_cast<std::uint8_t>(hasThirds ? (a + 2 * b) / 3 : 0);
    }
    for (std::size_t code = 0; code < values.size(); code++) {
        values[code][3] = hasThirds || code < 3 ? 255 : 0;
    }
    return values;
}

std::array<std::array<std::uint8_t, 4>, blockPixels> DecodeColorBlock(const std::uint8_t* block,
                                                                      bool alwaysFour) {
    const auto values = ColorBlockValues(block, alwaysFour);
    std::array<std::array<std::uint8_t, 4>, blockPixels> pixels;
    for (std::size_t pixel = 0; pixel < blockPixels; pixel++) {
        pixels[pixel] = values[(block[4 + pixel / 4] >> (2 * (pixel % 4))) & 3];
    }
    return pixels;
}
