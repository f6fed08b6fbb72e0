#include "texture/pixel_image.h"

#include <cstring>

namespace {

struct eSourceLayout {
    std::size_t pixelBytes;
    // Where a pixel has its channels; alpha is looked at only with four bytes a pixel.
    std::size_t red;
    std::size_t green;
    std::size_t blue;
};

eSourceLayout SourceLayout(int pixelLayout) {
    switch (pixelLayout) {
        case pixelLayoutBgra:
            return {4, 2, 1, 0};
        case pixelLayoutRgb:
            return {3, 0, 1, 2};
        case pixelLayoutBgr:
            return {3, 2, 1, 0};
        case pixelLayoutGrey:
            return {1, 0, 0, 0};
        default:
            return {4, 0, 1, 2};
    }
}

// The pixel as one number, so that the compiler turns a whole row into a few shuffles.
void SwapRedAndBlue(std::uint8_t* target, const std::uint8_t* source, std::size_t width) {
    for (std::size_t x = 0; x < width; x++) {
        std::uint32_t pixel;
        std::memcpy(&pixel, source + 4 * x, 4);
        pixel = (pixel & 0xff00ff00) | ((pixel >> 16) & 0xff) | ((pixel & 0xff) << 16);
        std::memcpy(target + 4 * x, &pixel, 4);
    }
}

void TakeOpaqueRow(std::uint8_t* target, const std::uint8_t* source, std::size_t width,
                   const eSourceLayout& layout) {
    for (std::size_t x = 0; x < width; x++) {
        const std::uint8_t* pixel = source + x * layout.pixelBytes;
        target[4 * x] = pixel[layout.red];
        target[4 * x + 1] = pixel[layout.green];
        target[4 * x + 2] = pixel[layout.blue];
        target[4 * x + 3] = 255;
    }
}

}  // namespace

void TakeRows(const eImageSource& source, std::size_t firstRow, unsigned count, ePixelImage& strip) {
    strip.Resize(source.Width(), count);
    const eSourceLayout layout = SourceLayout(source.pixelLayout);
    const std::size_t leftBytes = static_cast<std::size_t>(source.region.left) * layout.pixelBytes;
    for (std::size_t y = 0; y < count; y++) {
        const auto sourceRow = static_cast<std::ptrdiff_t>(firstRow + y) + source.region.top;
        const std::uint8_t* row = source.pixels + sourceRow * source.rowPitch + leftBytes;
        std::uint8_t* target = strip.rgba.data() + 4 * y * strip.width;
        if (layout.pixelBytes < 4) {
            TakeOpaqueRow(target, row, strip.width, layout);
        } else if (layout.red == 2) {
            SwapRedAndBlue(target, row, strip.width);
        } else {
            std::memcpy(target, row, std::size_t{4} * strip.width);
        }
    }
}
