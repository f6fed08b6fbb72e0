#include "texture/level_encoder.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

#include "texture/alpha_block.h"
#include "texture/block_group.h"
#include "texture/color_block.h"
#include "texture/distinct_blocks.h"
#include "texture/packed_pixels.h"

namespace {

using eBlockPixels = std::array<std::array<std::uint8_t, 4>, blockPixels>;

std::size_t BlockBytes(eTexelCoding coding) {
    return coding == eTexelCoding::Dxt1 ? 8 : 16;
}

// The alpha of DXT3: sixteen numbers of 4 bits, the first pixel lowest.
eGroupWords EncodeCoarseAlpha(const eGroupChannel& values) {
    eGroupWords words{};
    for (std::size_t pixel = blockPixels; pixel-- > 0;) {
        for (std::size_t lane = 0; lane < groupBlocks; lane++) {
            const std::uint32_t coarse = (values[pixel][lane] * 15U + 127) / 255;
            words[lane] = (words[lane] << 4) | coarse;
        }
    }
    return words;
}

// A block of 16 bytes has the first eight from here.
eGroupWords EncodeFirstHalf(const eBlockGroup& group, eTexelCoding coding) {
    switch (coding) {
        case eTexelCoding::Dxt3:
            return EncodeCoarseAlpha(group.channels[3]);
        case eTexelCoding::Ati2:
            return EncodeAlphaBlocks(group.channels[0]);
        default:
            return EncodeAlphaBlocks(group.channels[3]);
    }
}

// Up to sixteen blocks, one behind the other.
void EncodeGroup(const ePixelImage& image, std::span<const std::size_t> blocks, eTexelCoding coding,
                 const eColorWeights& colorWeights, std::uint8_t* target) {
    const std::size_t blockBytes = BlockBytes(coding);
    const eBlockGroup group = GatherBlocks(image, blocks);
    const eGroupWords last = coding == eTexelCoding::Ati2 ? EncodeAlphaBlocks(group.channels[1])
                                                          : EncodeColorBlocks(group, colorWeights);
    for (std::size_t lane = 0; lane < blocks.size(); lane++) {
        std::memcpy(target + (lane + 1) * blockBytes - 8, &last[lane], 8);
    }
    if (blockBytes == 16) {
        const eGroupWords start = EncodeFirstHalf(group, coding);
        for (std::size_t lane = 0; lane < blocks.size(); lane++) {
            std::memcpy(target + lane * blockBytes, &start[lane], 8);
        }
    }
}

void EncodeBlocks(const ePixelImage& image, eTexelCoding coding, const eColorWeights& colorWeights,
                  std::uint8_t* target) {
    const std::size_t blockBytes = BlockBytes(coding);
    const eDistinctBlocks distinct = FindDistinctBlocks(image);
    std::vector<std::uint8_t> encoded(distinct.blocks.size() * blockBytes);
    for (std::size_t first = 0; first < distinct.blocks.size(); first += groupBlocks) {
        const std::size_t count = std::min(groupBlocks, distinct.blocks.size() - first);
        EncodeGroup(image, std::span(distinct.blocks).subspan(first, count), coding, colorWeights,
                    encoded.data() + first * blockBytes);
    }
    for (const std::size_t place : distinct.placeOf) {
        std::memcpy(target, encoded.data() + place * blockBytes, blockBytes);
        target += blockBytes;
    }
}

void SetChannel(eBlockPixels& pixels, std::size_t channel,
                const std::array<std::uint8_t, blockPixels>& values) {
    for (std::size_t pixel = 0; pixel < blockPixels; pixel++) {
        pixels[pixel][channel] = values[pixel];
    }
}

std::array<std::uint8_t, blockPixels> DecodeCoarseAlpha(const std::uint8_t* block) {
    std::array<std::uint8_t, blockPixels> values;
    for (std::size_t pixel = 0; pixel < blockPixels; pixel++) {
        const unsigned coarse = (block[pixel / 2] >> (4 * (pixel % 2))) & 15U;
        values[pixel] = static_cast<std::uint8_t>(coarse * 17);
    }
    return values;
}

eBlockPixels DecodeBlock(const std::uint8_t* block, eTexelCoding coding) {
    if (coding == eTexelCoding::Dxt1) {
        return DecodeColorBlock(block, false);
    }
    if (coding == eTexelCoding::Ati2) {
        eBlockPixels pixels{};
        SetChannel(pixels, 0, DecodeAlphaBlock(block));
        SetChannel(pixels, 1, DecodeAlphaBlock(block + 8));
        std::array<std::uint8_t, blockPixels> opaque;
        opaque.fill(255);
        SetChannel(pixels, 3, opaque);
        return pixels;
    }
    eBlockPixels pixels = DecodeColorBlock(block + 8, true);
    SetChannel(pixels, 3, coding == eTexelCoding::Dxt3 ? DecodeCoarseAlpha(block) : DecodeAlphaBlock(block));
    return pixels;
}

// The part of a block that lies within the image.
void PlaceBlock(const eBlockPixels& pixels, std::size_t left, std::size_t top, ePixelImage& image) {
    const std::size_t columns = std::min<std::size_t>(4, image.width - left);
    const std::size_t rows = std::min<std::size_t>(4, image.height - top);
    for (std::size_t row = 0; row < rows; row++) {
        std::uint8_t* target = image.rgba.data() + 4 * ((top + row) * image.width + left);
        std::memcpy(target, pixels[4 * row].data(), 4 * columns);
    }
}

ePixelImage DecodeBlocks(std::span<const std::uint8_t> bytes, eTexelCoding coding, unsigned width,
                         unsigned height) {
    ePixelImage image;
    image.Resize(width, height);
    const std::size_t blockBytes = BlockBytes(coding);
    const std::uint8_t* block = bytes.data();
    for (std::size_t top = 0; top < height; top += 4) {
        for (std::size_t left = 0; left < width; left += 4) {
            PlaceBlock(DecodeBlock(block, coding), left, top, image);
            block += blockBytes;
        }
    }
    return image;
}

}  // namespace

void EncodeRows(const ePixelImage& strip, const eTextureFormat& format,
                const std::array<float, 3>& colorWeights, std::uint8_t* target) {
    if (IsBlockCoding(format.coding)) {
        EncodeBlocks(strip, format.coding, colorWeights, target);
    } else {
        PackPixels(strip, format.pixelFormat, colorWeights, target);
    }
}

ePixelImage DecodeLevel(std::span<const std::uint8_t> bytes, eTexelCoding coding,
                        const eDdsPixelFormat& pixelFormat, unsigned width, unsigned height) {
    return IsBlockCoding(coding) ? DecodeBlocks(bytes, coding, width, height)
                                 : UnpackPixels(bytes, pixelFormat, width, height);
}
