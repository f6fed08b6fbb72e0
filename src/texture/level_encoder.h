// One level of a texture as the bytes of its file, and back.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "texture/pixel_image.h"
#include "texture/texture_format.h"

// Writes rows in the format's published layout to target, which has room for LevelBytes of the strip. A level
// may be written in strips, with blocks in strips of a multiple of four rows but for the last one.
// colorWeights say how much an error of red, green and blue counts, and what luminance is made of. Cost in
// DXT5: about 11 ns a pixel.
void EncodeRows(const ePixelImage& strip, const eTextureFormat& format,
                const std::array<float, 3>& colorWeights, std::uint8_t* target);

// Channels that the format lacks are 0, alpha 255. bytes holds the whole level, LevelBytes of them.
ePixelImage DecodeLevel(std::span<const std::uint8_t> bytes, eTexelCoding coding,
                        const eDdsPixelFormat& pixelFormat, unsigned width, unsigned height);
