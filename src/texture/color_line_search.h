// The search for the ends of a colour block: which two colours, and the thirds between them, come nearest to
// the pixels. It alternates between codes for given ends and the best ends for given codes, as k-means does;
// the error of ends follows from five sums over the codes, so no pixel is looked at twice.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>

#include "texture/block_group.h"
#include "texture/color_bits.h"
#include "texture/lanes.h"

inline constexpr auto pixelCount = static_cast<float>(blockPixels);

// Sums over pixels are made for eight blocks in words, what follows from them for four blocks in floats.
inline constexpr std::size_t octetBlocks = 8;
inline constexpr std::size_t quadBlocks = 4;
inline constexpr std::size_t octetQuads = octetBlocks / quadBlocks;

template <class Value>
using ePerQuad = std::array<Value, octetQuads>;

// The colours of eight blocks, as distances from a byte near each block's mean.
struct eOctetColors {
    ePerChannel<eWordLanes> base;
    ePerChannel<std::array<eWordLanes, blockPixels>> offset;
    ePerChannel<eWordLanes> offsetSum;
};

// What the steps for four blocks need of that.
struct eQuadColors {
    ePerChannel<eFloatLanes> base;
    ePerChannel<eFloatLanes> offsetSum;
};

// The line that a block's colours are taken from, in offsets: its first end, and the way from one code to the
// next, a third of the way to the second end. Code 0 is the first end, 3 the second.
struct eColorLine {
    ePerChannel<eFloatLanes> first{};
    ePerChannel<eFloatLanes> step{};
};

struct eLineChoice {
    eColorLine line;
    eFloatLanes error;
};

// Gives a pixel its code: the whole part of start plus the product of slope and offset.
struct eProjection {
    ePerChannel<eFloatLanes> slope{};
    eFloatLanes start;
};

// The same for eight blocks, in fixed point.
struct eWordProjection {
    ePerChannel<eWordLanes> slope{};
    eWordLanes start;
};

inline constexpr int fractionBits = 12;
inline constexpr float fractionOne = 1 << fractionBits;

struct eWordSums {
    eWordLanes code{};
    eWordLanes codeSquare{};
    ePerChannel<eWordLanes> product{};
};

struct eCodeSums {
    eFloatLanes code;
    eFloatLanes codeSquare;
    ePerChannel<eFloatLanes> product;
};

// The channel's bits for a byte value, rounded down, or to the nearest with bias 0.5.
inline eIntLanes Bits(eFloatLanes value, std::size_t channel, float bias) {
    const auto highest = static_cast<float>(HighestBits(channel));
    return ToInts(Min(Max(value * (highest / 255.0F) + bias, SplatFloat(0)), SplatFloat(highest)));
}

// The octet that starts at lane 0 or 8 of the group.
inline eOctetColors ColorsOfOctet(const eBlockGroup& group, std::size_t octet) {
    eOctetColors colors;
    for (std::size_t channel = 0; channel < colorChannels; channel++) {
        auto& offsets = colors.offset[channel];
        eWordLanes sum{};
        for (std::size_t pixel = 0; pixel < blockPixels; pixel++) {
            const eWordPair words = Widen(group.channels[channel][pixel]);
            offsets[pixel] = octet == 0 ? words.low : words.high;
            sum += offsets[pixel];
        }
        const eWordLanes base = (sum + 8) >> 4;
        for (eWordLanes& offset : offsets) {
            offset -= base;
        }
        colors.base[channel] = base;
        colors.offsetSum[channel] = sum - (base << 4);
    }
    return colors;
}

template <int quad>
inline eQuadColors ColorsOfQuad(const eOctetColors& octet) {
    eQuadColors colors;
    for (std::size_t channel = 0; channel < colorChannels; channel++) {
        colors.base[channel] = ToFloats<quad>(octet.base[channel]);
        colors.offsetSum[channel] = ToFloats<quad>(octet.offsetSum[channel]);
    }
    return colors;
}

// What a channel's squared error, for codes on the line, has beyond the sum of the squared offsets.
inline eFloatLanes ChannelError(const eQuadColors& colors, const eCodeSums& sums, std::size_t channel,
                                eFloatLanes first, eFloatLanes step) {
    return first * (pixelCount * first + 2.0F * (step * sums.code - colors.offsetSum[channel])) +
           step * (step * sums.codeSquare - 2.0F * sums.product[channel]);
}

// The offset of the end that a channel's bits give.
inline eFloatLanes EndOffset(const eQuadColors& colors, std::size_t channel, eIntLanes bits) {
    return ToFloats(ExpandedBits(bits, channel)) - colors.base[channel];
}

// An end's bits, from its offset.
inline eIntLanes EndBits(const eQuadColors& colors, std::size_t channel, eFloatLanes offset) {
    return ToInts(colors.base[channel] + offset + 0.5F) >> (8 - channelBits[channel]);
}

struct eChannelLine {
    eFloatLanes first;
    eFloatLanes step;
    eFloatLanes error;
};

// With the first end given: the line to the second end that suits the codes best, rounded.
[[gnu::always_inline]] inline eChannelLine WithBestSecond(const eQuadColors& colors, const eCodeSums& sums,
                                                          std::size_t channel, eIntLanes firstBits) {
    const eFloatLanes first = EndOffset(colors, channel, firstBits);
    const eFloatLanes bestStep =
        (sums.product[channel] - first * sums.code) / Max(sums.codeSquare, SplatFloat(1));
    const eIntLanes secondBits = Bits(colors.base[channel] + first + 3.0F * bestStep, channel, 0.5F);
    const eFloatLanes step = (EndOffset(colors, channel, secondBits) - first) * (1.0F / 3.0F);
    return {first, step, ChannelError(colors, sums, channel, first, step)};
}

// The search for the ends of eight blocks. Normal maps leave red at 0; for them the search starts at green,
// with the same result in less time.
template <std::size_t firstChannel>
class eLineSearch {
public:
    eLineSearch(const eOctetColors& octetColors, const eColorWeights& channelWeights)
        : octet(octetColors),
          colors{ColorsOfQuad<0>(octetColors), ColorsOfQuad<1>(octetColors)},
          weights(channelWeights),
          scale{std::sqrt(weights[0]), std::sqrt(weights[1]), std::sqrt(weights[2])} {
        best[0].error = SplatFloat(1e30F);
        best[1].error = best[0].error;
    }

    ePerQuad<eColorLine> BestLines() {
        SumCodes(AxisProjection());
        for (int round = 0; round < 2; round++) {
            Try({FittedLine(0), FittedLine(1)});
        }
        TryGreenNeighbours();
        return {best[0].line, best[1].line};
    }

    // Runs over for pixels more than eight codes away from the line; a line that short is bad whatever code
    // they get, and its error is that of the codes.
    eWordLanes Code(const eWordProjection& projection, std::size_t pixel) const {
        eWordLanes place = projection.start;
        for (std::size_t channel = firstChannel; channel < colorChannels; channel++) {
            place = MultiplyAdd(place, projection.slope[channel], octet.offset[channel][pixel]);
        }
        return Min(Max(place >> fractionBits, eWordLanes{}), 3 - eWordLanes{});
    }

    eWordProjection ProjectionOf(const ePerQuad<eColorLine>& lines) const {
        return InWords({LineProjection(lines[0]), LineProjection(lines[1])});
    }

private:
    // The covariance matrix of the weighted channels.
    struct eCovariance {
        eFloatLanes redRed{};
        eFloatLanes redGreen{};
        eFloatLanes redBlue{};
        eFloatLanes greenGreen{};
        eFloatLanes greenBlue{};
        eFloatLanes blueBlue{};
    };

    template <int quad>
    eCovariance Covariance() const {
        eCovariance sum;
        for (std::size_t pixel = 0; pixel < blockPixels; pixel++) {
            const eFloatLanes g = ToFloats<quad>(octet.offset[1][pixel]);
            const eFloatLanes b = ToFloats<quad>(octet.offset[2][pixel]);
            sum.greenGreen += g * g;
            sum.greenBlue += g * b;
            sum.blueBlue += b * b;
            if constexpr (firstChannel == 0) {
                const eFloatLanes r = ToFloats<quad>(octet.offset[0][pixel]);
                sum.redRed += r * r;
                sum.redGreen += r * g;
                sum.redBlue += r * b;
            }
        }
        sum.redRed *= scale[0] * scale[0];
        sum.redGreen *= scale[0] * scale[1];
        sum.redBlue *= scale[0] * scale[2];
        sum.greenGreen *= scale[1] * scale[1];
        sum.greenBlue *= scale[1] * scale[2];
        sum.blueBlue *= scale[2] * scale[2];
        return sum;
    }

    // The direction of the largest spread by power iteration, from the matrix's row with the largest
    // diagonal, in offsets that still want their weights, with 32 as the largest component. A block of one
    // colour gets 0.
    ePerChannel<eFloatLanes> PrincipalAxis(const eCovariance& m) const {
        const auto redLeads = (m.redRed >= m.greenGreen) & (m.redRed >= m.blueBlue);
        const auto greenLeads = m.greenGreen >= m.blueBlue;
        eFloatLanes r = Select(redLeads, m.redRed, Select(greenLeads, m.redGreen, m.redBlue));
        eFloatLanes g = Select(redLeads, m.redGreen, Select(greenLeads, m.greenGreen, m.greenBlue));
        eFloatLanes b = Select(redLeads, m.redBlue, Select(greenLeads, m.greenBlue, m.blueBlue));
        for (int round = 0; round < 3; round++) {
            const eFloatLanes shrink = 1.0F / Largest(r, g, b);
            r *= shrink;
            g *= shrink;
            b *= shrink;
            const eFloatLanes nextRed = m.redRed * r + m.redGreen * g + m.redBlue * b;
            const eFloatLanes nextGreen = m.redGreen * r + m.greenGreen * g + m.greenBlue * b;
            b = m.redBlue * r + m.greenBlue * g + m.blueBlue * b;
            r = nextRed;
            g = nextGreen;
        }
        r *= scale[0];
        g *= scale[1];
        b *= scale[2];
        const eFloatLanes grow = 32.0F / Largest(r, g, b);
        return {r * grow, g * grow, b * grow};
    }

    static eFloatLanes Largest(eFloatLanes r, eFloatLanes g, eFloatLanes b) {
        return Max(Max(Max(r, -r), Max(g, -g)), Max(Max(b, -b), SplatFloat(1e-6F)));
    }

    // Codes by the place of each pixel on the principal axis, from one extreme to the other.
    eWordProjection AxisProjection() const {
        const auto low = PrincipalAxis(Covariance<0>());
        const auto high = PrincipalAxis(Covariance<1>());
        ePerChannel<eWordLanes> axis{};
        for (std::size_t channel = firstChannel; channel < colorChannels; channel++) {
            axis[channel] = NarrowInts(ToInts(low[channel]), ToInts(high[channel]));
        }
        eWordLanes lowest = 32767 - eWordLanes{};
        eWordLanes highest = -lowest;
        for (std::size_t pixel = 0; pixel < blockPixels; pixel++) {
            eWordLanes place{};
            for (std::size_t channel = firstChannel; channel < colorChannels; channel++) {
                place += axis[channel] * octet.offset[channel][pixel];
            }
            lowest = Min(lowest, place);
            highest = Max(highest, place);
        }
        return InWords({SpreadAlong<0>(axis, lowest, highest), SpreadAlong<1>(axis, lowest, highest)});
    }

    template <int quad>
    static eProjection SpreadAlong(const ePerChannel<eWordLanes>& axis, eWordLanes lowest,
                                   eWordLanes highest) {
        const eFloatLanes low = ToFloats<quad>(lowest);
        const eFloatLanes toCodes = 3.0F / Max(ToFloats<quad>(highest) - low, SplatFloat(1));
        eProjection projection;
        for (std::size_t channel = firstChannel; channel < colorChannels; channel++) {
            projection.slope[channel] = ToFloats<quad>(axis[channel]) * toCodes;
        }
        projection.start = 0.5F - low * toCodes;
        return projection;
    }

    // Codes by the nearest point of the line; a line of no length gives code 0 to all.
    eProjection LineProjection(const eColorLine& line) const {
        eProjection projection;
        eFloatLanes length = SplatFloat(0);
        eFloatLanes start = SplatFloat(0);
        for (std::size_t channel = firstChannel; channel < colorChannels; channel++) {
            projection.slope[channel] = line.step[channel] * weights[channel];
            length += line.step[channel] * projection.slope[channel];
            start -= line.first[channel] * projection.slope[channel];
        }
        const eFloatLanes toCodes = 1.0F / Max(length, SplatFloat(1e-6F));
        for (std::size_t channel = firstChannel; channel < colorChannels; channel++) {
            projection.slope[channel] *= toCodes;
        }
        projection.start = 0.5F + start * toCodes;
        return projection;
    }

    static eWordLanes Fixed(eFloatLanes low, eFloatLanes high) {
        return NarrowInts(ToInts(low * fractionOne), ToInts(high * fractionOne));
    }

    static eWordProjection InWords(const ePerQuad<eProjection>& projections) {
        eWordProjection words;
        for (std::size_t channel = firstChannel; channel < colorChannels; channel++) {
            words.slope[channel] = Fixed(projections[0].slope[channel], projections[1].slope[channel]);
        }
        words.start = Fixed(projections[0].start, projections[1].start);
        return words;
    }

    template <int quad>
    static eCodeSums SumsOfQuad(const eWordSums& words) {
        eCodeSums quadSums;
        quadSums.code = ToFloats<quad>(words.code);
        quadSums.codeSquare = ToFloats<quad>(words.codeSquare);
        for (std::size_t channel = firstChannel; channel < colorChannels; channel++) {
            quadSums.product[channel] = ToFloats<quad>(words.product[channel]);
        }
        return quadSums;
    }

    void SumCodes(const eWordProjection& projection) {
        eWordSums words;
        for (std::size_t pixel = 0; pixel < blockPixels; pixel++) {
            const eWordLanes code = Code(projection, pixel);
            words.code += code;
            words.codeSquare += code * code;
            for (std::size_t channel = firstChannel; channel < colorChannels; channel++) {
                words.product[channel] += code * octet.offset[channel][pixel];
            }
        }
        sums = {SumsOfQuad<0>(words), SumsOfQuad<1>(words)};
    }

    // The line that suits the codes best, channel by channel.
    eColorLine FittedLine(std::size_t quad) const {
        const eCodeSums& quadSums = sums[quad];
        const eFloatLanes determinant = pixelCount * quadSums.codeSquare - quadSums.code * quadSums.code;
        const eFloatLanes inverse = 1.0F / Max(determinant, SplatFloat(1));
        eColorLine line;
        for (std::size_t channel = firstChannel; channel < colorChannels; channel++) {
            const eFloatLanes first = colors[quad].base[channel] +
                                      inverse * (quadSums.codeSquare * colors[quad].offsetSum[channel] -
                                                 quadSums.code * quadSums.product[channel]);
            const eIntLanes below = Bits(first, channel, 0.0F);
            const eIntLanes above = Min(below + 1, HighestBits(channel) - eIntLanes{});
            const eChannelLine a = WithBestSecond(colors[quad], quadSums, channel, below);
            const eChannelLine b = WithBestSecond(colors[quad], quadSums, channel, above);
            const auto takesAbove = b.error < a.error;
            line.first[channel] = Select(takesAbove, b.first, a.first);
            line.step[channel] = Select(takesAbove, b.step, a.step);
        }
        return line;
    }

    eFloatLanes LineError(std::size_t quad, const eColorLine& line) const {
        eFloatLanes error = SplatFloat(0);
        for (std::size_t channel = firstChannel; channel < colorChannels; channel++) {
            error += weights[channel] *
                     ChannelError(colors[quad], sums[quad], channel, line.first[channel], line.step[channel]);
        }
        return error;
    }

    void Take(std::size_t quad, const eColorLine& line) {
        const eFloatLanes error = LineError(quad, line);
        eLineChoice& choice = best[quad];
        const auto better = error < choice.error;
        for (std::size_t channel = firstChannel; channel < colorChannels; channel++) {
            choice.line.first[channel] = Select(better, line.first[channel], choice.line.first[channel]);
            choice.line.step[channel] = Select(better, line.step[channel], choice.line.step[channel]);
        }
        choice.error = Min(error, choice.error);
    }

    // Gives the pixels their codes for the lines and notes each line that is the best so far.
    void Try(const ePerQuad<eColorLine>& lines) {
        SumCodes(ProjectionOf(lines));
        Take(0, lines[0]);
        Take(1, lines[1]);
    }

    // The best lines of the quads with the bits of green moved at one end.
    ePerQuad<eColorLine> GreenMoved(bool firstEnd, int bitsMore) const {
        ePerQuad<eColorLine> lines;
        for (std::size_t quad = 0; quad < octetQuads; quad++) {
            eColorLine& line = lines[quad];
            line = best[quad].line;
            eFloatLanes first = line.first[greenChannel];
            eFloatLanes second = first + 3.0F * line.step[greenChannel];
            eFloatLanes& moved = firstEnd ? first : second;
            const eIntLanes bits = EndBits(colors[quad], greenChannel, moved) + bitsMore;
            const eIntLanes lowest{};
            const eIntLanes legal = Min(Max(bits, lowest), lowest + HighestBits(greenChannel));
            moved = EndOffset(colors[quad], greenChannel, legal);
            line.first[greenChannel] = first;
            line.step[greenChannel] = (second - first) * (1.0F / 3.0F);
        }
        return lines;
    }

    void TryGreenNeighbours() {
        const std::array<ePerQuad<eColorLine>, 4> neighbours = {GreenMoved(true, -1), GreenMoved(true, 1),
                                                                GreenMoved(false, -1), GreenMoved(false, 1)};
        for (const ePerQuad<eColorLine>& lines : neighbours) {
            Try(lines);
        }
    }

    const eOctetColors& octet;
    ePerQuad<eQuadColors> colors;
    eColorWeights weights;
    ePerChannel<float> scale;
    ePerQuad<eCodeSums> sums{};
    ePerQuad<eLineChoice> best{};
};
