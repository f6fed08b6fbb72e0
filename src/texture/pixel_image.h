// The own form of an image, R, G, B, A bytes, and the forms that callers bring.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// Rows from the top without gaps.
struct ePixelImage {
    unsigned width = 0;
    unsigned height = 0;
    // 4 * width * height bytes.
    std::vector<std::uint8_t> rgba;

    void Resize(unsigned newWidth, unsigned newHeight) {
        width = newWidth;
        height = newHeight;
        rgba.resize(std::size_t{4} * newWidth * newHeight);
    }
    const std::uint8_t* Pixel(std::size_t x, std::size_t y) const& {
        return rgba.data() + 4 * (y * width + x);
    }
    // The texel would not outlive its picture.
    const std::uint8_t* Pixel(std::size_t x, std::size_t y) const&& = delete;
};

// Bytes of a pixel in the source; any other number means R, G, B, A.
inline constexpr int pixelLayoutBgra = 1;
inline constexpr int pixelLayoutRgb = 2;
inline constexpr int pixelLayoutBgr = 3;
inline constexpr int pixelLayoutGrey = 4;
inline constexpr int pixelLayoutRgba = 5;

// Both corners belong to the region.
struct ePixelRegion {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    unsigned Width() const { return static_cast<unsigned>(right - left) + 1; }
    unsigned Height() const { return static_cast<unsigned>(bottom - top) + 1; }
};

// An image as the caller has it.
struct eImageSource {
    // Row 0 of the whole image; rows lie rowPitch bytes apart (less than 0: bottom-up).
    const std::uint8_t* pixels;
    std::ptrdiff_t rowPitch;
    int pixelLayout;
    // The part to take, within the image.
    ePixelRegion region;

    unsigned Width() const { return region.Width(); }
    unsigned Height() const { return region.Height(); }
};

// Brings rows of the region into the own form, into a strip of count rows whose memory is used again. Layouts
// without alpha get 255.
void TakeRows(const eImageSource& source, std::size_t firstRow, unsigned count, ePixelImage& strip);
