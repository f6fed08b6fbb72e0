#include "standalone/image.h"

#include <algorithm>
#include <array>
#include <cmath>

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

float Fraction(float value) {
    return value - std::floor(value);
}

host::AColor Between(const host::AColor& a, const host::AColor& b, float f) {
    return {a.r + (b.r - a.r) * f, a.g + (b.g - a.g) * f, a.b + (b.b - a.b) * f, a.a + (b.a - a.a) * f};
}

}  // namespace

host::AColor eImage::Texel(int column, int row) const {
    const std::size_t first = (static_cast<std::size_t>(height - 1 - row) * static_cast<std::size_t>(width) +
                               static_cast<std::size_t>(column)) *
                              4;
    if (has16Bits) {
        const auto* const values = static_cast<const std::uint16_t*>(texels.get()) + first;
        constexpr float kFull = 65535;
        return {static_cast<float>(values[0]) / kFull, static_cast<float>(values[1]) / kFull,
                static_cast<float>(values[2]) / kFull, static_cast<float>(values[3]) / kFull};
    }
    const auto* const values = static_cast<const std::uint8_t*>(texels.get()) + first;
    return {byteValues[values[0]], byteValues[values[1]], byteValues[values[2]], byteValues[values[3]]};
}

host::AColor eImage::Nearest(float u, float v) const {
    // Rounding can bring a fraction just below 0 to 1.
    const int column = std::min(static_cast<int>(Fraction(u) * static_cast<float>(width)), width - 1);
    const int row = std::min(static_cast<int>(Fraction(v) * static_cast<float>(height)), height - 1);
    return Texel(column, row);
}

host::AColor eImage::Bilinear(float u, float v) const {
    // From the middle of the first texel; half a texel before it lies the last one.
    const float x = Fraction(u) * static_cast<float>(width) - 0.5F;
    const float y = Fraction(v) * static_cast<float>(height) - 0.5F;
    const float left = std::floor(x), below = std::floor(y);
    const auto wrap = [](float place, int count) { return (static_cast<int>(place) + count) % count; };
    const int x0 = wrap(left, width), x1 = (x0 + 1) % width;
    const int y0 = wrap(below, height), y1 = (y0 + 1) % height;
    return Between(Between(Texel(x0, y0), Texel(x1, y0), x - left),
                   Between(Texel(x0, y1), Texel(x1, y1), x - left), y - below);
}

}  // namespace standalone
