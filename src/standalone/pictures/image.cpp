#include "standalone/pictures/image.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string_view>

#include "host/map_row.h"
#include "standalone/pictures/image_readers.h"

namespace standalone {

std::size_t eImage::Bytes() const {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4 * (has16Bits ? 2 : 1);
}

namespace {

constexpr std::array<float, 256> MakeByteValues() {
    std::array<float, 256> values{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = static_cast<float>(i) / 255.0F;
    }
    return values;
}

constexpr std::array<float, 256> byteValues = MakeByteValues();

// Most places lie on the picture itself and need no floor.
template <class Real>
Real Fraction(Real value) {
    return value >= 0 && value < 1 ? value : value - std::floor(value);
}

host::AColor Between(const host::AColor& a, const host::AColor& b, float f) {
    return {a.r + (b.r - a.r) * f, a.g + (b.g - a.g) * f, a.b + (b.b - a.b) * f, a.a + (b.a - a.a) * f};
}

}  // namespace

inline std::size_t eImage::FirstValue(int column, int row) const {
    return (static_cast<std::size_t>(height - 1 - row) * static_cast<std::size_t>(width) +
            static_cast<std::size_t>(column)) *
           4;
}

inline host::AColor eImage::Texel(int column, int row) const {
    const std::size_t first = FirstValue(column, row);
    if (has16Bits) {
        const auto* const values = static_cast<const std::uint16_t*>(texels.get()) + first;
        constexpr float kFull = 65535;
        return {static_cast<float>(values[0]) / kFull, static_cast<float>(values[1]) / kFull,
                static_cast<float>(values[2]) / kFull, static_cast<float>(values[3]) / kFull};
    }
    const auto* const values = static_cast<const std::uint8_t*>(texels.get()) + first;
    return {byteValues[values[0]], byteValues[values[1]], byteValues[values[2]], byteValues[values[3]]};
}

namespace {

// The texel at a place counted in texels; the last one behind the end, where rounding leads, and the first
// one for what is no number.
template <class Real>
int TexelAt(Real place, int count) {
    return place >= 0 ? std::min(static_cast<int>(place), count - 1) : 0;
}

}  // namespace

host::AColor eImage::Nearest(double u, double v) const {
    return Texel(TexelAt(Fraction(u) * width, width), TexelAt(Fraction(v) * height, height));
}

// A texel of bytes is its pixel but for the order: its fractions of 255 round to the bytes that they come
// from.
void eImage::NearestRow(std::span<const host::DPoint2> places, std::span<std::uint8_t> pixels) const {
    std::uint8_t* pixel = pixels.data();
    if (has16Bits) {
        for (const host::DPoint2& place : places) {
            host::PutPixel(Nearest(place.x, place.y), pixel);
            pixel += 4;
        }
        return;
    }
    const auto* const values = static_cast<const std::uint8_t*>(texels.get());
    const std::uint8_t* row = nullptr;
    double v = 0;
    for (const host::DPoint2& place : places) {
        if (row == nullptr || place.y != v) {
            v = place.y;
            row = values + FirstValue(0, TexelAt(Fraction(v) * height, height));
        }
        const std::uint8_t* const texel = row + 4 * TexelAt(Fraction(place.x) * width, width);
        pixel[0] = texel[2];
        pixel[1] = texel[1];
        pixel[2] = texel[0];
        pixel[3] = texel[3];
        pixel += 4;
    }
}

void eImage::CopyRow(int row, std::span<std::uint8_t> pixels) const {
    if (has16Bits) {
        for (int x = 0; x < width; ++x) {
            host::PutPixel(Texel(x, row), pixels.data() + 4 * static_cast<std::ptrdiff_t>(x));
        }
        return;
    }
    // As one number, so that the compiler turns a whole row into a few shuffles.
    const std::uint8_t* const values = static_cast<const std::uint8_t*>(texels.get()) + FirstValue(0, row);
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        std::uint32_t texel = 0;
        std::memcpy(&texel, values + i, 4);
        texel = (texel & 0xFF00FF00) | ((texel >> 16) & 0xFF) | ((texel & 0xFF) << 16);
        std::memcpy(pixels.data() + i, &texel, 4);
    }
}

host::AColor eImage::Bilinear(float u, float v) const {
    // Counted from the middle of the texel before the first, so that whole numbers are the right neighbours.
    const float x = Fraction(u) * static_cast<float>(width) + 0.5F;
    const float y = Fraction(v) * static_cast<float>(height) + 0.5F;
    const int right = TexelAt(x, width + 1), left = (right + width - 1) % width;
    const int above = TexelAt(y, height + 1), below = (above + height - 1) % height;
    const float fx = x - std::floor(x), fy = y - std::floor(y);
    return Between(Between(Texel(left, below), Texel(right % width, below), fx),
                   Between(Texel(left, above % height), Texel(right % width, above % height), fx), fy);
}

namespace {

bool IsTiff(std::string_view begin) {
    using namespace std::string_view_literals;
    const auto marks = {"II*\0"sv, "MM\0*"sv, "II+\0"sv, "MM\0+"sv};
    return std::ranges::any_of(marks, [&](std::string_view mark) { return begin.starts_with(mark); });
}

}  // namespace

eDecodedImage DecodeImage(std::span<const std::uint8_t> file) {
    const std::string_view begin(reinterpret_cast<const char*>(file.data()), file.size());
    if (begin.starts_with("DDS ")) {
        return DecodeDds(file);
    }
    return IsTiff(begin) ? DecodeTiff(file) : DecodePlainImage(file);
}

}  // namespace standalone
