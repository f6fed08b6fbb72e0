// Pixels as numbers with a bit field for each channel, the lowest byte first, rows without gaps.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "texture/pixel_image.h"
#include "texture/texture_format.h"

// Writes an image's pixels; each channel is rounded to its field's width. Luminance is the sum of red, green
// and blue by luminanceWeights, clamped to a byte. target has room for all pixels.
void PackPixels(const ePixelImage& image, const eDdsPixelFormat& format,
                const std::array<float, 3>& luminanceWeights, std::uint8_t* target);

// Reads them back. A channel without a field is 0, alpha without one 255; luminance fills red, green and
// blue. bytes holds the whole level.
ePixelImage UnpackPixels(std::span<const std::uint8_t> bytes, const eDdsPixelFormat& format, unsigned width,
                         unsigned height);
