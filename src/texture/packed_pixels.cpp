#include "texture/packed_pixels.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>

namespace {

// What each byte value puts into the pixel's number.
using eFieldTable = std::array<std::uint32_t, 256>;

eFieldTable MakeFieldTable(std::uint32_t mask) {
    eFieldTable table{};
    if (mask == 0) {
        return table;
    }
    const int shift = std::countr_zero(mask);
    const std::uint32_t highest = mask >> shift;
    for (std::uint32_t value = 0; value < table.size(); value++) {
        table[value] = ((value * highest + 127) / 255) << shift;
    }
    return table;
}

// The field's value as a byte.
std::uint8_t FieldByte(std::uint32_t number, std::uint32_t mask) {
    const int shift = std::countr_zero(mask);
    const std::uint32_t highest = mask >> shift;
    return static_cast<std::uint8_t>((((number & mask) >> shift) * 255 + highest / 2) / highest);
}

std::uint8_t Luminance(const std::uint8_t* pixel, const std::array<float, 3>& weights) {
    const float sum = static_cast<float>(pixel[0]) * weights[0] + static_cast<float>(pixel[1]) * weights[1] +
                      static_cast<float>(pixel[2]) * weights[2];
    return static_cast<std::uint8_t>(std::lround(std::clamp(sum, 0.0F, 255.0F)));
}

}  // namespace

void PackPixels(const ePixelImage& image, const eDdsPixelFormat& format,
                const std::array<float, 3>& luminanceWeights, std::uint8_t* target) {
    const std::array<eFieldTable, 4> fields = {
        MakeFieldTable(format.redMask), MakeFieldTable(format.greenMask), MakeFieldTable(format.blueMask),
        MakeFieldTable(format.alphaMask)};
    const bool isLuminance = (format.flags & ddsIsLuminance) != 0;
    const std::size_t pixelBytes = format.bitCount / 8;
    for (std::size_t i = 0; i < image.rgba.size() / 4; i++) {
        const std::uint8_t* pixel = image.rgba.data() + 4 * i;
        const std::uint8_t red = isLuminance ? Luminance(pixel, luminanceWeights) : pixel[0];
        std::uint32_t number =
            fields[0][red] | fields[1][pixel[1]] | fields[2][pixel[2]] | fields[3][pixel[3]];
        for (std::size_t byte = 0; byte < pixelBytes; byte++) {
            target[i * pixelBytes + byte] = static_cast<std::uint8_t>(number);
            number >>= 8;
        }
    }
}

ePixelImage UnpackPixels(std::span<const std::uint8_t> bytes, const eDdsPixelFormat& format, unsigned width,
                         unsigned height) {
    const bool isLuminance = (format.flags & ddsIsLuminance) != 0;
    const std::array<std::uint32_t, 4> masks = {
        format.redMask, isLuminance ? format.redMask : format.greenMask,
        isLuminance ? format.redMask : format.blueMask, format.alphaMask};
    const std::size_t pixelBytes = format.bitCount / 8;
    ePixelImage image;
    image.Resize(width, height);
    for (std::size_t i = 0; i < image.rgba.size() / 4; i++) {
        std::uint32_t number = 0;
        for (std::size_t byte = pixelBytes; byte-- > 0;) {
            number = (number << 8) | bytes[i * pixelBytes + byte];
        }
        for (std::size_t channel = 0; channel < masks.size(); channel++) {
            const std::uint8_t absent = channel == 3 ? 255 : 0;
            image.rgba[4 * i + channel] = masks[channel] == 0 ? absent : FieldByte(number, masks[channel]);
        }
    }
    return image;
}
