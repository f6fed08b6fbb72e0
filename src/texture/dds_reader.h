// Reads DDS files: those that CompressImage writes, and others with the same pixel formats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "texture/dds_header.h"
#include "texture/pixel_image.h"
#include "texture/texture_format.h"

struct eDdsProblem {
    // Byte in the file.
    std::size_t offset;
    std::string text;
    // Pixels are missing or can't be found; else the header is of a kind that isn't read, or disagrees with
    // itself.
    bool isDamage = false;
};

struct eDdsLevel {
    unsigned width;
    unsigned height;
    // In the file.
    std::size_t offset;
    std::size_t byteCount;
};

struct eDdsFile {
    eDdsHeader header;
    // Missing for a format that can't be read, and then there are no levels either.
    std::optional<eTexelCoding> coding;
    // The levels that the file really holds, whatever its header claims.
    std::vector<eDdsLevel> levels;
    // Empty for a sound file.
    std::vector<eDdsProblem> problems;
};

// Finds the levels in a whole file and checks what the header says about them. Whatever the bytes are,
// nothing outside of them is read and nothing is allocated for what isn't there.
eDdsFile ReadDds(std::span<const std::uint8_t> file);

// The first problem that no reader could overlook, or null.
const eDdsProblem* FirstDamage(const eDdsFile& dds);

// Decodes a level that ReadDds found in the same bytes: at most 8 bytes of picture for a byte of file with
// blocks, 4 with packed pixels.
ePixelImage DecodeDdsLevel(std::span<const std::uint8_t> file, const eDdsFile& dds, std::size_t level);

// "DXT5", "32 bits, masks 0xff0000 0xff00 0xff 0xff000000", or the FourCC's number where its coding isn't
// known.
std::string PixelFormatName(const eDdsPixelFormat& pixelFormat);
