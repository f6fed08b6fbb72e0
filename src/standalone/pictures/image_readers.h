// What stands behind DecodeImage: one reader for each library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "standalone/pictures/image.h"

namespace standalone {

// png, jpg, tga, bmp, psd and gif.
eDecodedImage DecodePlainImage(std::span<const std::uint8_t> file);
// The first level.
eDecodedImage DecodeDds(std::span<const std::uint8_t> file);
// The first picture; no reader for it in a build without the library.
eDecodedImage DecodeTiff(std::span<const std::uint8_t> file);

// True if the alpha of all texels is full; `values` holds four channels a texel.
template <class Value>
bool AllOpaque(const Value* values, std::size_t texelCount) {
    for (std::size_t i = 0; i < texelCount; ++i) {
        if (values[i * 4 + 3] != static_cast<Value>(~Value{0})) {
            return false;
        }
    }
    return true;
}

}  // namespace standalone
