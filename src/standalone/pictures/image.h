#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "base/bilingual.h"
#include "host/values.h"

namespace standalone {

// A decoded picture: four channels of 8 or 16 bits, rows from the top. Texel i of n covers i/n to (i + 1)/n,
// v runs upward, and the picture repeats outside 0 to 1.
class eImage {
public:
    using eTexels = std::unique_ptr<void, void (*)(void*)>;

    // `texels` holds width × height × 4 values of the depth.
    eImage(int imageWidth, int imageHeight, bool withAlpha, bool with16Bits, eTexels values)
        : width(imageWidth),
          height(imageHeight),
          hasAlpha(withAlpha),
          has16Bits(with16Bits),
          texels(std::move(values)) {}

    int Width() const { return width; }
    int Height() const { return height; }
    bool HasAlpha() const { return hasAlpha; }
    std::size_t Bytes() const;

    // In double precision: a place near a texel's edge stays in its texel on pictures of any width.
    host::AColor Nearest(double u, double v) const;
    // The same for many places, as pixels (host/map_row.h). Least is done where places follow one another in
    // a row of texels.
    void NearestRow(std::span<const host::DPoint2> places, std::span<std::uint8_t> pixels) const;
    // A row of texels as pixels; row 0 is the lowest.
    void CopyRow(int row, std::span<std::uint8_t> pixels) const;
    // Between the middles of the four texels around.
    host::AColor Bilinear(float u, float v) const;

private:
    // Row 0 is the lowest.
    std::size_t FirstValue(int column, int row) const;
    host::AColor Texel(int column, int row) const;

    int width;
    int height;
    bool hasAlpha;
    bool has16Bits;
    eTexels texels;
};

// What a file holds: a picture, or the reason why there is none (picture_problem.h).
struct eDecodedImage {
    std::unique_ptr<eImage> image;
    eBilingual problem;
};

// Decodes a file of one of kPictureFormats, whatever its name: the first picture of an animated one, the
// first level of a .dds. A file that ends early is refused, and so is a header that promises more texels than
// the file's bytes could ever hold: before memory is taken for them.
eDecodedImage DecodeImage(std::span<const std::uint8_t> file);

}  // namespace standalone
