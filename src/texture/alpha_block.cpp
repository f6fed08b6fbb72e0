#include "texture/alpha_block.h"

#include <cstddef>

namespace {

constexpr std::size_t sevenths = 7;
constexpr std::size_t fifths = 5;

struct eEnds {
    eByteLanes low;
    eByteLanes high;
};

// What the codes stand for, upwards.
using ePalette = std::array<eByteLanes, 8>;

// What candidates are rated by. Where the range of a block is small, decoders that cut the values between the
// ends to whole bytes and decoders that keep fractions differ by as much as the error itself. Such a block is
// fine: it is rated in sevenths of a byte, against values between those of both decoders.
struct eRating {
    eByteLanes isFine;
    // What the ends of candidates keep within.
    eByteLanes lowest;
    eByteLanes highest;
    // As they are; of a fine block in sevenths above `lowest`.
    eGroupChannel values;
};

// The best ends so far and the sum of their squared errors. The sums stay below 2^15: no candidate is off by
// more than a tenth of the range at its ends, or by more than a step inside.
struct eChoice {
    eEnds ends;
    eWordPair error;
};

eByteLanes Lowest(const eGroupChannel& values) {
    eByteLanes lowest = values[0];
    for (const eByteLanes value : values) {
        lowest = Min(lowest, value);
    }
    return lowest;
}

eByteLanes Highest(const eGroupChannel& values) {
    eByteLanes highest = values[0];
    for (const eByteLanes value : values) {
        highest = Max(highest, value);
    }
    return highest;
}

// The inner steps between 0 and distance, cut to whole numbers: step * distance / steps. The divisions are
// products that stay exact for a distance up to 255.
template <std::size_t steps>
std::array<eWordLanes, steps - 1> InnerSteps(eWordLanes distance) {
    static_assert(steps == sevenths || steps == fifths);
    constexpr auto divisor = static_cast<std::int16_t>(steps);
    const eWordLanes whole = steps == sevenths ? ((distance + 1) * 73) >> 9 : ((distance + 1) * 51) >> 8;
    const eWordLanes rest = distance - whole * divisor;
    constexpr std::int16_t restFactor = steps == sevenths ? 37 : 52;
    std::array<eWordLanes, steps - 1> inner;
    eWordLanes wholes = whole;
    eWordLanes rests = rest;
    for (eWordLanes& step : inner) {
        step = wholes + ((rests * restFactor) >> 8);
        wholes += whole;
        rests += rest;
    }
    return inner;
}

// The ends and the steps between them, from palette[first] on.
template <std::size_t steps>
void PlaceRamp(const eEnds& ends, std::size_t first, ePalette& palette) {
    const eWordPair distance = Widen(ends.high - ends.low);
    const auto low = InnerSteps<steps>(distance.low);
    const auto high = InnerSteps<steps>(distance.high);
    palette[first] = ends.low;
    for (std::size_t step = 1; step < steps; step++) {
        palette[first + step] = ends.low + Narrow({low[step - 1], high[step - 1]});
    }
    palette[first + steps] = ends.high;
}

// A third of the way from the step that is cut to a whole byte to the exact one, in sevenths: the place with
// the least sum of squares where the cutting decoder counts double.
eWordLanes FineStep(eWordLanes exact, eWordLanes cut) {
    const eWordLanes fraction = exact - cut * static_cast<std::int16_t>(sevenths);
    constexpr std::int16_t twoThirds = 171;
    return exact - ((fraction * twoThirds + 128) >> 8);
}

ePalette FinePalette(const eEnds& ends, const ePalette& palette, eByteLanes lowest) {
    const eWordPair distance = Widen(ends.high - ends.low);
    const eByteLanes start = (ends.low - lowest) * std::uint8_t{sevenths};
    ePalette fine;
    eWordPair exact{};
    for (std::size_t entry = 0; entry < fine.size(); entry++) {
        const eWordPair cut = Widen(palette[entry] - ends.low);
        fine[entry] = start + Narrow({FineStep(exact.low, cut.low), FineStep(exact.high, cut.high)});
        exact.low += distance.low;
        exact.high += distance.high;
    }
    return fine;
}

struct eEightValues {
    static ePalette Palette(const eEnds& ends) {
        ePalette palette;
        PlaceRamp<sevenths>(ends, 0, palette);
        return palette;
    }
    static ePalette RatedPalette(const eEnds& ends, const eRating& rating) {
        ePalette palette = Palette(ends);
        const ePalette fine = FinePalette(ends, palette, rating.lowest);
        for (std::size_t entry = 0; entry < palette.size(); entry++) {
            palette[entry] = Select(rating.isFine, fine[entry], palette[entry]);
        }
        return palette;
    }
    // A block of this form has its ends apart.
    static eEnds Legal(const eEnds& ends, const eRating& rating) {
        const eByteLanes low = Max(Min(ends.low, SplatByte(254)), rating.lowest);
        return {low, Max(Min(ends.high, rating.highest), low + 1)};
    }
};

struct eSixValues {
    static ePalette Palette(const eEnds& ends) {
        ePalette palette;
        palette[0] = SplatByte(0);
        PlaceRamp<fifths>(ends, 1, palette);
        palette[7] = SplatByte(255);
        return palette;
    }
    static ePalette RatedPalette(const eEnds& ends, const eRating&) { return Palette(ends); }
    static eEnds Legal(const eEnds& ends, const eRating&) { return {ends.low, Max(ends.high, ends.low)}; }
};

eByteLanes Distance(eByteLanes a, eByteLanes b) {
    return Max(a, b) - Min(a, b);
}

eWordPair SumOfSquares(const eGroupChannel& values, const ePalette& palette) {
    eWordPair sum{};
    for (const eByteLanes value : values) {
        eByteLanes nearest = Distance(value, palette[0]);
        for (std::size_t entry = 1; entry < palette.size(); entry++) {
            nearest = Min(nearest, Distance(value, palette[entry]));
        }
        const eWordPair error = Widen(nearest);
        sum.low += error.low * error.low;
        sum.high += error.high * error.high;
    }
    return sum;
}

template <class Form>
eChoice Rated(const eRating& rating, const eEnds& ends) {
    return {ends, SumOfSquares(rating.values, Form::RatedPalette(ends, rating))};
}

// The lanes where a has the smaller error.
eByteLanes IsBetter(const eChoice& a, const eChoice& b) {
    return Narrow({a.error.low < b.error.low, a.error.high < b.error.high});
}

void Take(const eChoice& candidate, eChoice& best) {
    const eByteLanes better = IsBetter(candidate, best);
    best.ends.low = Select(better, candidate.ends.low, best.ends.low);
    best.ends.high = Select(better, candidate.ends.high, best.ends.high);
    best.error.low = Min(candidate.error.low, best.error.low);
    best.error.high = Min(candidate.error.high, best.error.high);
}

template <class Form>
void Try(const eRating& rating, const eEnds& ends, eChoice& best) {
    Take(Rated<Form>(rating, Form::Legal(ends, rating)), best);
}

// count twentieths of the range between the ends.
eByteLanes Twentieths(const eEnds& ends, std::int16_t count) {
    const eWordPair distance = Widen(ends.high - ends.low);
    const auto factor = static_cast<std::int16_t>(13 * count);
    return Narrow({(distance.low * factor + 128) >> 8, (distance.high * factor + 128) >> 8});
}

// The ends of the full range moved inwards, each by each; best holds the full range itself.
template <class Form>
void TryInsets(const eRating& rating, const eEnds& range, eChoice& best) {
    const std::array<eByteLanes, 3> insets = {SplatByte(0), Twentieths(range, 1), Twentieths(range, 2)};
    for (std::size_t low = 0; low < insets.size(); low++) {
        for (std::size_t high = 0; high < insets.size(); high++) {
            if (low != 0 || high != 0) {
                Try<Form>(rating, {range.low + insets[low], range.high - insets[high]}, best);
            }
        }
    }
}

eByteLanes OneBelow(eByteLanes value) {
    return Max(value, SplatByte(1)) - 1;
}

eByteLanes OneAbove(eByteLanes value) {
    return Min(value, SplatByte(254)) + 1;
}

template <class Form>
void TryNeighbours(const eRating& rating, eChoice& best) {
    const eEnds centre = best.ends;
    Try<Form>(rating, {OneBelow(centre.low), centre.high}, best);
    Try<Form>(rating, {OneAbove(centre.low), centre.high}, best);
    Try<Form>(rating, {centre.low, OneBelow(centre.high)}, best);
    Try<Form>(rating, {centre.low, OneAbove(centre.high)}, best);
}

// Halfway to the next entry of the palette, rounded down: a value above it is nearer to the next one.
std::array<eByteLanes, 7> Thresholds(const ePalette& palette) {
    std::array<eByteLanes, 7> thresholds;
    for (std::size_t entry = 0; entry < thresholds.size(); entry++) {
        const eByteLanes a = palette[entry];
        const eByteLanes b = palette[entry + 1];
        thresholds[entry] = (a & b) + ((a ^ b) >> 1);
    }
    return thresholds;
}

// The palette's nearest entry; the lower one of two that are equally near.
eByteLanes NearestEntry(eByteLanes value, const std::array<eByteLanes, 7>& thresholds) {
    eByteLanes entry{};
    for (const eByteLanes threshold : thresholds) {
        entry -= reinterpret_cast<eByteLanes>(value > threshold);
    }
    return entry;
}

// Sums over a block's pixels, as the normal equations of a line through (entry, value) need them.
struct eLineSums {
    eWordLanes entry{};
    eWordLanes entrySquare{};
    eWordLanes value{};
    eWordLanes product{};

    void Add(eWordLanes pixelEntry, eWordLanes pixelValue) {
        entry += pixelEntry;
        entrySquare += pixelEntry * pixelEntry;
        value += pixelValue;
        product += pixelEntry * pixelValue;
    }
};

eIntLanes RoundedByte(eFloatLanes value) {
    return ToInts(Min(Max(value, SplatFloat(0)), SplatFloat(255)) + 0.5F);
}

struct eIntEnds {
    eIntLanes low;
    eIntLanes high;
};

// The line with the least squares, at entries 0 and 7. A block with one entry only gets a flat line.
template <int half>
eIntEnds FittedLine(const eLineSums& sums) {
    const eFloatLanes entry = ToFloats<half>(sums.entry);
    const eFloatLanes value = ToFloats<half>(sums.value);
    const eFloatLanes determinant =
        static_cast<float>(blockPixels) * ToFloats<half>(sums.entrySquare) - entry * entry;
    const eFloatLanes slope =
        (static_cast<float>(blockPixels) * ToFloats<half>(sums.product) - entry * value) /
        Max(determinant, SplatFloat(1));
    const eFloatLanes start = (value - slope * entry) * (1.0F / static_cast<float>(blockPixels));
    return {RoundedByte(start), RoundedByte(start + 7.0F * slope)};
}

eEnds FittedEnds(const eGroupChannel& values, const eEnds& ends) {
    const std::array<eByteLanes, 7> thresholds = Thresholds(eEightValues::Palette(ends));
    eLineSums low;
    eLineSums high;
    for (const eByteLanes value : values) {
        const eWordPair entryWords = Widen(NearestEntry(value, thresholds));
        const eWordPair valueWords = Widen(value);
        low.Add(entryWords.low, valueWords.low);
        high.Add(entryWords.high, valueWords.high);
    }
    const eIntEnds a = FittedLine<0>(low);
    const eIntEnds b = FittedLine<1>(low);
    const eIntEnds c = FittedLine<0>(high);
    const eIntEnds d = FittedLine<1>(high);
    return {Narrow({NarrowInts(a.low, b.low), NarrowInts(c.low, d.low)}),
            Narrow({NarrowInts(a.high, b.high), NarrowInts(c.high, d.high)})};
}

// The range of a block, widened to seven steps.
eEnds FullRange(eByteLanes lowest, eByteLanes highest) {
    const eByteLanes low = Min(lowest, SplatByte(255 - sevenths));
    return {low, Max(highest, low + std::uint8_t{sevenths})};
}

bool IsExact(const eChoice& choice) {
    return !AnyLane(choice.error.low | choice.error.high);
}

eRating CoarseRating(const eGroupChannel& values) {
    return {SplatByte(0), SplatByte(0), SplatByte(255), values};
}

// Fine are the lanes whose values and the ends around them, in sevenths, fit a byte, but for those that come
// out exact anyway and those that may take the other form, whose errors must compare.
eRating FineRating(const eGroupChannel& values, eByteLanes lowest, eByteLanes highest, eByteLanes atEdge) {
    constexpr std::uint8_t widestRange = 255 / sevenths - 2;
    const eByteLanes range = highest - lowest;
    const auto isNarrow =
        reinterpret_cast<eByteLanes>((range >= SplatByte(sevenths)) & (range <= SplatByte(widestRange)));
    eRating rating = CoarseRating(values);
    rating.isFine = isNarrow & ~atEdge;
    rating.lowest = Select(rating.isFine, lowest - 1, rating.lowest);
    rating.highest = Select(rating.isFine, highest + 1, rating.highest);
    for (eByteLanes& value : rating.values) {
        value = Select(rating.isFine, (value - rating.lowest) * std::uint8_t{sevenths}, value);
    }
    return rating;
}

eChoice SearchEightValues(const eGroupChannel& values, const eRating& rating, const eEnds& range) {
    eChoice best = Rated<eEightValues>(rating, range);
    if (IsExact(best)) {
        return best;
    }
    TryInsets<eEightValues>(rating, range, best);
    Try<eEightValues>(rating, FittedEnds(values, best.ends), best);
    TryNeighbours<eEightValues>(rating, best);
    return best;
}

// The range of the values that 0 and 255 don't stand for; where there are none, any ends will do.
eEnds InnerRange(const eGroupChannel& values) {
    const eByteLanes lowEdge = SplatByte(alphaEdge);
    const eByteLanes highEdge = SplatByte(255 - alphaEdge);
    eEnds range = {SplatByte(255), SplatByte(0)};
    for (const eByteLanes value : values) {
        const auto isInner = reinterpret_cast<eByteLanes>((value > lowEdge) & (value < highEdge));
        range.low = Min(range.low, value | ~isInner);
        range.high = Max(range.high, value & isInner);
    }
    return {Min(range.low, range.high), range.high};
}

eChoice SearchSixValues(const eGroupChannel& values) {
    const eEnds range = InnerRange(values);
    const eRating rating = CoarseRating(values);
    eChoice best = Rated<eSixValues>(rating, range);
    TryInsets<eSixValues>(rating, range, best);
    TryNeighbours<eSixValues>(rating, best);
    return best;
}

// Entry 0 is the lower end, which stands second in the block: code 1. Entry 7 is code 0, the others run back.
eByteLanes EightValueCode(eByteLanes entry) {
    const eByteLanes code = (8 - entry) & 7;
    return code ^ (reinterpret_cast<eByteLanes>(code < 2) & 1);
}

// Entry 0 is the value 0, entry 1 the lower end, which stands first here, entry 6 the higher one, 7 is 255.
eByteLanes SixValueCode(eByteLanes entry) {
    const auto isEnd = reinterpret_cast<eByteLanes>((entry == 1) | (entry == 6));
    const auto isZero = reinterpret_cast<eByteLanes>(entry == 0);
    const eByteLanes endCode = reinterpret_cast<eByteLanes>(entry == 6) & 1;
    return Select(isEnd, endCode, Select(isZero, SplatByte(6), entry));
}

// Eight codes of three bits in three bytes, the first lowest.
void PackCodes(const eByteLanes* codes, eByteLanes* planes) {
    planes[0] = codes[0] | (codes[1] << 3) | (codes[2] << 6);
    planes[1] = (codes[2] >> 2) | (codes[3] << 1) | (codes[4] << 4) | (codes[5] << 7);
    planes[2] = (codes[5] >> 1) | (codes[6] << 2) | (codes[7] << 5);
}

eGroupWords WriteBlocks(const eGroupChannel& values, const eEnds& ends, eByteLanes isSix) {
    const auto eight = Thresholds(eEightValues::Palette(ends));
    const auto six = Thresholds(eSixValues::Palette(ends));
    std::array<eByteLanes, blockPixels> codes;
    for (std::size_t pixel = 0; pixel < blockPixels; pixel++) {
        codes[pixel] = Select(isSix, SixValueCode(NearestEntry(values[pixel], six)),
                              EightValueCode(NearestEntry(values[pixel], eight)));
    }
    std::array<eByteLanes, 8> planes;
    planes[0] = Select(isSix, ends.low, ends.high);
    planes[1] = Select(isSix, ends.high, ends.low);
    PackCodes(codes.data(), planes.data() + 2);
    PackCodes(codes.data() + 8, planes.data() + 5);
    return WordsOfPlanes(planes);
}

}  // namespace

eGroupWords EncodeAlphaBlocks(const eGroupChannel& values) {
    const eByteLanes lowest = Lowest(values);
    const eByteLanes highest = Highest(values);
    const auto atEdge = reinterpret_cast<eByteLanes>((lowest <= SplatByte(alphaEdge)) |
                                                     (highest >= SplatByte(255 - alphaEdge)));
    const eRating rating = FineRating(values, lowest, highest, atEdge);
    eChoice best = SearchEightValues(values, rating, FullRange(lowest, highest));
    eByteLanes isSix{};
    if (AnyLane(atEdge) && !IsExact(best)) {
        const eChoice six = SearchSixValues(values);
        isSix = IsBetter(six, best) & atEdge;
        best.ends.low = Select(isSix, six.ends.low, best.ends.low);
        best.ends.high = Select(isSix, six.ends.high, best.ends.high);
    }
    return WriteBlocks(values, best.ends, isSix);
}

std::array<std::uint8_t, 8> AlphaBlockValues(std::uint8_t a, std::uint8_t b) {
    std::array<std::uint8_t, 8> values = {a, b, 0, 0, 0, 0, 0, 255};
    const std::size_t steps = a > b ? sevenths : fifths;
    for (std::size_t step = 1; step < steps; step++) {
        values[step + 1] = static_cast<std::uint8_t>(((steps - step) * a + step * b) / steps);
    }
    return values;
}

std::array<std::uint8_t, blockPixels> DecodeAlphaBlock(const std::uint8_t* block) {
    const std::array<std::uint8_t, 8> values = AlphaBlockValues(block[0], block[1]);
    std::uint64_t codes = 0;
    for (std::size_t byte = 0; byte < 6; byte++) {
        codes |= std::uint64_t{block[2 + byte]} << (8 * byte);
    }
    std::array<std::uint8_t, blockPixels> pixels;
    for (std::uint8_t& pixel : pixels) {
        pixel = values[codes & 7];
        codes >>= 3;
    }
    return pixels;
}
