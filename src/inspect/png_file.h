#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "base/bilingual.h"
#include "texture/pixel_image.h"

namespace inspect {

// The picture in a texture file, .dds or .bmp, as a png file: of a .dds the first level, decoded, all four
// channels as they are, so that a normal map shows its x as transparency. Empty, with the reason in `problem`
// (UTF-8), if the file holds no picture that can be read.
std::string PictureAsPng(std::span<const std::uint8_t> content, eBilingual& problem);

// A picture with texels as a png file of three channels, or four where it is transparent somewhere. Empty if
// there is not enough memory.
std::string MakePng(const ePixelImage& image);

}  // namespace inspect
