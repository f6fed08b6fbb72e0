// The one entry of texture compression: an image goes in, a DDS file comes out through a callback.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>

#include "texture/pixel_image.h"

// What the encoder can be told. Of the known vocabulary of options only those exist that it heeds or has to
// refuse.
struct CompressionOptions {
    // How much an error of red, green and blue counts. The defaults suit normal maps with Y in green and Z in
    // blue too: where the ground is near flat an error of Z lies along the normal and is lost when that is
    // made unit length, while an error of Y turns it.
    std::array<float, 3> colorWeights = {0.3086F, 0.6094F, 0.0820F};
    // 0: the image keeps its size. Any other value is refused.
    int rescaleMode = 0;
    // Of no effect without rescaling.
    int rescaleFilter = 4;
    // 30: levels are made; 32: one level. Other values, which ask for an image that brings its levels along,
    // are refused.
    int g_mip_map_type = 30;
    // How many levels type 30 makes, at most as many as there are; 0: down to 1 by 1.
    int g_specified_mip_maps = 0;
    // The file's format; see texture_format.h for the numbers that are offered.
    int g_texture_format = 0;
    // Given to each call of the callback.
    std::intptr_t userValue = 0;
};

inline constexpr int mipsGenerated = 30;
inline constexpr int mipsNone = 32;

struct eMipInfo {
    // 0 is the largest.
    unsigned level;
    unsigned width;
    unsigned height;
};

// Takes the next bytes of the file and answers 0 to go on. mipInfo is null for the four bytes of the magic
// and for the header of 124 bytes, then each call brings a level.
using eWriteBlock = std::function<int(const void* buffer, std::size_t byteCount, const eMipInfo* mipInfo,
                                      std::intptr_t userValue)>;

inline constexpr int compressDone = 0;
// No pixels, a region that isn't within the image, sides too large for the header, or sides that are not 1, 2
// or a multiple of 4 in the formats 0 to 3 and 24.
inline constexpr int compressBadSize = -24;
// The same sides in format 29.
inline constexpr int compressBadBlockSize = -14;
// A format or a mode that is not offered.
inline constexpr int compressUnsupported = -1;

// Writes the image as a DDS file with its levels (mip_chain.h has the filter). pixels is the first row; rows
// lie rowPitch bytes apart; pixelLayout as in pixel_image.h. region, if not null, is the part to take.
// Answers compressDone, one of the failures above, all of them before anything is written, or the callback's
// first answer that isn't 0; then nothing more is written.
//
// Cost in DXT5 with all levels: 13 to 23 ns a pixel on one core, flat ground the least. Memory: the bytes of
// an encoded level, and 5 bytes a pixel for the levels that follow.
int CompressImage(const std::uint8_t* pixels, unsigned width, unsigned height, int rowPitch, int pixelLayout,
                  const CompressionOptions& options, const eWriteBlock& writeBlock,
                  const ePixelRegion* region = nullptr);
