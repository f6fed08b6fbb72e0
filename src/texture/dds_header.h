// The head of a DDS file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "texture/texture_format.h"

inline constexpr std::array<std::uint8_t, 4> ddsMagic = {'D', 'D', 'S', ' '};
// Behind the magic; the levels follow, the largest first.
inline constexpr std::size_t ddsHeaderSize = 124;
inline constexpr std::uint32_t ddsPixelFormatSize = 32;

struct eDdsHeader {
    std::uint32_t size = ddsHeaderSize;
    std::uint32_t flags = 0;
    std::uint32_t height = 0;
    std::uint32_t width = 0;
    std::uint32_t firstLevelBytes = 0;
    std::uint32_t depth = 0;
    // 0 in a file that doesn't speak of levels: it has one.
    std::uint32_t mipCount = 0;
    std::uint32_t pixelFormatSize = ddsPixelFormatSize;
    eDdsPixelFormat pixelFormat;
    std::uint32_t capabilities = 0;
    // Cube maps and volumes.
    std::uint32_t moreCapabilities = 0;
};

// The flags say which fields hold: 1 capabilities, 2 height, 4 width, 0x1000 pixel format, 0x20000 mip count,
// 0x80000 size of the first level.
inline constexpr std::uint32_t ddsFlags = 0x81007;
inline constexpr std::uint32_t ddsFlagsWithMips = 0xa1007;
// 0x1000 texture, 8 more than one surface, 0x400000 levels.
inline constexpr std::uint32_t ddsOneLevel = 0x1000;
inline constexpr std::uint32_t ddsManyLevels = 0x401008;

using eDdsHeaderBytes = std::array<std::uint8_t, ddsHeaderSize>;

eDdsHeaderBytes WriteDdsHeader(const eDdsHeader& header);
eDdsHeader ReadDdsHeader(const eDdsHeaderBytes& bytes);
