#pragma once

#include <array>
#include <cstdint>
#include <cstring>

#include "texture/block_group.h"

// The sixteen values of an alpha block after a decoder that keeps the fractions between the ends, as graphics
// hardware does to a degree.
inline std::array<double, blockPixels> ExactAlphas(const std::uint8_t* block) {
    const bool hasSevenths = block[0] > block[1];
    const double steps = hasSevenths ? 7 : 5;
    std::uint64_t codes = 0;
    std::memcpy(&codes, block + 2, 6);
    std::array<double, blockPixels> values;
    for (double& value : values) {
        const auto code = static_cast<unsigned>(codes & 7);
        const double place = code < 2 ? code * steps : code - 1.0;
        const bool isFixed = !hasSevenths && code >= 6;
        value = isFixed ? (code - 6) * 255.0 : (block[0] * (steps - place) + block[1] * place) / steps;
        codes >>= 3;
    }
    return values;
}
