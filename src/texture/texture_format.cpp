#include "texture/texture_format.h"

#include <algorithm>
#include <array>
#include <bit>

namespace {

constexpr std::uint32_t FourCc(const char (&text)[5]) {
    std::uint32_t number = 0;
    for (int i = 3; i >= 0; i--) {
        number = (number << 8) | static_cast<std::uint8_t>(text[i]);
    }
    return number;
}

constexpr eTextureFormat Blocks(int number, eTexelCoding coding, std::uint32_t fourCc) {
    return {number, coding, {ddsIsFourCc, fourCc, 0, 0, 0, 0, 0}};
}

constexpr eTextureFormat Packed(int number, std::uint32_t flags, std::uint32_t bitCount, std::uint32_t red,
                                std::uint32_t green, std::uint32_t blue, std::uint32_t alpha) {
    return {number, eTexelCoding::Packed, {flags, 0, bitCount, red, green, blue, alpha}};
}

constexpr std::uint32_t dxt1 = FourCc("DXT1");
constexpr std::uint32_t dxt3 = FourCc("DXT3");
constexpr std::uint32_t dxt5 = FourCc("DXT5");
constexpr std::uint32_t ati2 = FourCc("ATI2");

// Number, flags, bits, then the masks of red, green, blue, alpha.
constexpr std::array formats = {
    Blocks(0, eTexelCoding::Dxt1, dxt1),
    Blocks(1, eTexelCoding::Dxt1, dxt1),
    Blocks(2, eTexelCoding::Dxt3, dxt3),
    Blocks(3, eTexelCoding::Dxt5, dxt5),
    Packed(4, ddsIsRgb | ddsHasAlpha, 16, 0xf00, 0xf0, 0xf, 0xf000),
    Packed(5, ddsIsRgb | ddsHasAlpha, 16, 0x7c00, 0x3e0, 0x1f, 0x8000),
    Packed(6, ddsIsRgb, 16, 0xf800, 0x7e0, 0x1f, 0),
    Packed(7, ddsIsRgb | ddsHasAlpha, 32, 0xff0000, 0xff00, 0xff, 0xff000000),
    Packed(8, ddsIsRgb, 24, 0xff0000, 0xff00, 0xff, 0),
    Packed(9, ddsIsRgb, 16, 0x7c00, 0x3e0, 0x1f, 0),
    Packed(13, ddsIsAlpha, 8, 0, 0, 0, 0xff),
    Packed(16, ddsIsLuminance | ddsHasAlpha, 16, 0xff, 0, 0, 0xff00),
    Packed(20, ddsIsLuminance, 8, 0xff, 0, 0, 0),
    Blocks(24, eTexelCoding::Dxt5, dxt5),
    Packed(25, ddsIsRgb, 32, 0xff0000, 0xff00, 0xff, 0),
    Packed(27, ddsIsRgb, 32, 0xffff, 0xffff0000, 0, 0),
    Blocks(29, eTexelCoding::Ati2, ati2),
    Packed(30, ddsIsLuminance, 16, 0xffff, 0, 0, 0),
};

// One run of at most 16 bits within the pixel, or none.
bool IsField(std::uint32_t mask, std::uint32_t bitCount) {
    if (mask == 0) {
        return true;
    }
    const std::uint32_t run = mask >> std::countr_zero(mask);
    return (run & (run + 1)) == 0 && run <= 0xffff && (std::uint64_t{mask} >> bitCount) == 0;
}

bool IsPacked(const eDdsPixelFormat& format) {
    const bool hasKind = (format.flags & (ddsIsRgb | ddsIsLuminance | ddsIsAlpha)) != 0;
    const bool hasBytes = format.bitCount % 8 == 0 && format.bitCount >= 8 && format.bitCount <= 32;
    return hasKind && hasBytes && IsField(format.redMask, format.bitCount) &&
           IsField(format.greenMask, format.bitCount) && IsField(format.blueMask, format.bitCount) &&
           IsField(format.alphaMask, format.bitCount);
}

}  // namespace

const eTextureFormat* FindTextureFormat(int number) {
    const auto found = std::ranges::find(formats, number, &eTextureFormat::number);
    return found == formats.end() ? nullptr : &*found;
}

std::optional<eTexelCoding> CodingOfPixelFormat(const eDdsPixelFormat& pixelFormat) {
    if ((pixelFormat.flags & ddsIsFourCc) == 0) {
        return IsPacked(pixelFormat) ? std::optional(eTexelCoding::Packed) : std::nullopt;
    }
    const auto found = std::ranges::find_if(formats, [&](const eTextureFormat& format) {
        return IsBlockCoding(format.coding) && format.pixelFormat.fourCc == pixelFormat.fourCc;
    });
    return found == formats.end() ? std::nullopt : std::optional(found->coding);
}

bool IsBlockCoding(eTexelCoding coding) {
    return coding != eTexelCoding::Packed;
}

std::uint64_t LevelBytes(eTexelCoding coding, std::uint32_t bitCount, unsigned width, unsigned height) {
    if (!IsBlockCoding(coding)) {
        return std::uint64_t{width} * height * (bitCount / 8);
    }
    const std::uint64_t blocks = (std::uint64_t{width} + 3) / 4 * ((std::uint64_t{height} + 3) / 4);
    return blocks * (coding == eTexelCoding::Dxt1 ? 8 : 16);
}
