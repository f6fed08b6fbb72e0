#include "texture/mip_chain.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

namespace {

// Neighbouring rows of a level.
struct eFloatRows {
    const eFloatLanes* pixels;
    std::size_t width;
};

eFloatLanes PixelAt(const eFloatRows& rows, std::size_t x, std::size_t y) {
    return rows.pixels[y * rows.width + x];
}

eFloatLanes PixelAt(const ePixelImage& rows, std::size_t x, std::size_t y) {
    eByteLanes bytes{};
    std::memcpy(&bytes, rows.Pixel(x, y), 4);
    return ToFloats<0>(Widen(bytes).low);
}

// The source pixels along one side that a pixel of the next level covers, and their shares, which sum up
// to 1.
struct eCover {
    std::size_t first;
    std::size_t count;
    std::array<float, 3> share;
};

// At an odd side of 2 half + 1 pixels each pixel of the next level covers 2 + 1 / half: all of the middle one
// of three, and of its neighbours what the pixels before it have left over.
eCover CoverOf(std::size_t place, unsigned side) {
    if (side == 1) {
        return {0, 1, {1.0F, 0.0F, 0.0F}};
    }
    if (side % 2 == 0) {
        return {2 * place, 2, {0.5F, 0.5F, 0.0F}};
    }
    const unsigned half = side / 2;
    const auto total = static_cast<float>(side);
    const auto before = static_cast<float>(place);
    const auto wholePixel = static_cast<float>(half);
    return {2 * place, 3, {(wholePixel - before) / total, wholePixel / total, (before + 1.0F) / total}};
}

template <class Rows>
eFloatLanes Average(const Rows& rows, const eCover& across, const eCover& down) {
    eFloatLanes sum{};
    for (std::size_t y = 0; y < down.count; y++) {
        eFloatLanes row{};
        for (std::size_t x = 0; x < across.count; x++) {
            row += across.share[x] * PixelAt(rows, across.first + x, y);
        }
        sum += down.share[y] * row;
    }
    return sum;
}

template <class Rows>
eFloatLanes AverageOfFour(const Rows& rows, std::size_t x) {
    return 0.25F * ((PixelAt(rows, x, 0) + PixelAt(rows, x + 1, 0)) +
                    (PixelAt(rows, x, 1) + PixelAt(rows, x + 1, 1)));
}

// Two pixels of the next level from four by two of this one; the sums of bytes are exact.
void AverageFourByTwo(const std::uint8_t* upper, const std::uint8_t* lower, eFloatLanes* target) {
    eByteLanes upperBytes;
    eByteLanes lowerBytes;
    std::memcpy(&upperBytes, upper, sizeof(upperBytes));
    std::memcpy(&lowerBytes, lower, sizeof(lowerBytes));
    const eWordPair upperWords = Widen(upperBytes);
    const eWordPair lowerWords = Widen(lowerBytes);
    const eWordLanes left = upperWords.low + lowerWords.low;
    const eWordLanes right = upperWords.high + lowerWords.high;
    target[0] = 0.25F * (ToFloats<0>(left) + ToFloats<1>(left));
    target[1] = 0.25F * (ToFloats<0>(right) + ToFloats<1>(right));
}

// A row of the next level from two rows of even width.
void HalveEvenRows(const ePixelImage& rows, std::size_t width, eFloatLanes* target) {
    std::size_t x = 0;
    for (; x + 2 <= width; x += 2) {
        AverageFourByTwo(rows.Pixel(2 * x, 0), rows.Pixel(2 * x, 1), target + x);
    }
    if (x < width) {
        target[x] = AverageOfFour(rows, 2 * x);
    }
}

void HalveEvenRows(const eFloatRows& rows, std::size_t width, eFloatLanes* target) {
    for (std::size_t x = 0; x < width; x++) {
        target[x] = AverageOfFour(rows, 2 * x);
    }
}

// rowsFrom(first, count) gives rows of the image.
template <class Image, class RowsFrom>
eFloatImage Halved(const Image& image, RowsFrom rowsFrom) {
    eFloatImage half;
    half.width = std::max(1U, image.Width() / 2);
    half.height = std::max(1U, image.Height() / 2);
    half.pixels.resize(std::size_t{half.width} * half.height);
    const bool isEven = image.Width() % 2 == 0 && image.Height() % 2 == 0;
    for (std::size_t y = 0; y < half.height; y++) {
        eFloatLanes* target = half.pixels.data() + y * half.width;
        const eCover down = CoverOf(y, image.Height());
        const auto& rows = rowsFrom(down.first, down.count);
        if (isEven) {
            HalveEvenRows(rows, half.width, target);
            continue;
        }
        for (std::size_t x = 0; x < half.width; x++) {
            target[x] = Average(rows, CoverOf(x, image.Width()), down);
        }
    }
    return half;
}

}  // namespace

unsigned FullLevelCount(unsigned width, unsigned height) {
    return static_cast<unsigned>(std::bit_width(std::max(width, height)));
}

eFloatImage HalvedImage(const eImageSource& image) {
    ePixelImage strip;
    return Halved(image, [&](std::size_t first, std::size_t count) -> const ePixelImage& {
        TakeRows(image, first, static_cast<unsigned>(count), strip);
        return strip;
    });
}

eFloatImage HalvedImage(const eFloatImage& image) {
    return Halved(image, [&](std::size_t first, std::size_t) {
        return eFloatRows{image.pixels.data() + first * image.width, image.width};
    });
}

void RoundRows(const eFloatImage& image, std::size_t firstRow, unsigned count, ePixelImage& strip) {
    strip.Resize(image.width, count);
    const eFloatLanes* pixels = image.pixels.data() + firstRow * image.width;
    for (std::size_t i = 0; i < strip.rgba.size() / 4; i++) {
        const eIntLanes whole = ToInts(pixels[i] + 0.5F);
        const eWordLanes words = NarrowInts(whole, whole);
        const eByteLanes bytes = Narrow({words, words});
        std::memcpy(strip.rgba.data() + 4 * i, &bytes, 4);
    }
}
