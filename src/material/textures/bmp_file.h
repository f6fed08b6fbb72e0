#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "material/textures/texture_image.h"

// The picture file of the engine, little-endian:
//
//   offset  size  field
//   0       2     "BM"
//   2       4     size of the file
//   6       4     0
//   10      4     54, offset of the pixels
//   14      4     40, size of the info header
//   18      4     width
//   22      4     height, positive: rows run from the bottom up
//   26      2     1, planes
//   28      2     bits per pixel, 24 or 32
//   30      24    0
//   54            rows: per pixel blue, green, red and, at 32 bits, alpha; rows of 24 bits are filled with
//   0xff
//                 to a multiple of 4 bytes
inline constexpr int kBmpHeaderSize = 54;

// The whole file; row 0 of the picture is written first. One without pixels is a header alone.
std::vector<std::uint8_t> MakeBmp(const eTextureRows& picture, int bitsPerPixel);

// Reads such a file back, alpha 255 at 24 bits. Nothing, with the reason and the byte offset in `problem`, if
// the bytes are no whole file of this kind.
struct eBmpPicture {
    eTextureImage image;
    int bitsPerPixel = 0;
};
std::optional<eBmpPicture> ReadBmp(std::span<const std::uint8_t> bytes, std::string& problem);
