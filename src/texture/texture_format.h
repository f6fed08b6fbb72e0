// The formats that a texture file can have: their numbers in the options, their descriptions in the file.
#pragma once

#include <cstdint>
#include <optional>

enum class eTexelCoding {
    // One number a pixel, the channels in bit fields.
    Packed,
    // Blocks of 4 by 4 pixels.
    Dxt1,
    Dxt3,
    Dxt5,
    // Two channels, red before green, each as the alpha of Dxt5.
    Ati2
};

// The pixel format of a DDS header without its size. Luminance stands in the red mask.
struct eDdsPixelFormat {
    std::uint32_t flags = 0;
    std::uint32_t fourCc = 0;
    std::uint32_t bitCount = 0;
    std::uint32_t redMask = 0;
    std::uint32_t greenMask = 0;
    std::uint32_t blueMask = 0;
    std::uint32_t alphaMask = 0;

    bool operator==(const eDdsPixelFormat&) const = default;
};

inline constexpr std::uint32_t ddsHasAlpha = 0x1;
inline constexpr std::uint32_t ddsIsAlpha = 0x2;
inline constexpr std::uint32_t ddsIsFourCc = 0x4;
inline constexpr std::uint32_t ddsIsRgb = 0x40;
inline constexpr std::uint32_t ddsIsLuminance = 0x20000;

struct eTextureFormat {
    // The value of g_texture_format.
    int number;
    eTexelCoding coding;
    eDdsPixelFormat pixelFormat;
};

// The format of a number, or null for one that is not offered: palettes (10, 14, 21, 22), signed channels
// (11, 12, 15, 26) and floats (17, 18, 19, 23, 28). DXT1 (0, 1) is written without transparent pixels.
const eTextureFormat* FindTextureFormat(int number);

// How the pixels of a file's format are coded, or nothing if it is none that can be read. Packed pixels may
// have any masks within 8, 16, 24 or 32 bits.
std::optional<eTexelCoding> CodingOfPixelFormat(const eDdsPixelFormat& pixelFormat);

bool IsBlockCoding(eTexelCoding coding);

// Sides up to this are read and written; it keeps every byte count within 64 bits.
inline constexpr unsigned maxTextureSide = 65536;

// The bytes of one level. bitCount is for packed pixels only.
std::uint64_t LevelBytes(eTexelCoding coding, std::uint32_t bitCount, unsigned width, unsigned height);
