#include "texture/compress_image.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

#include "texture/dds_header.h"
#include "texture/level_encoder.h"
#include "texture/mip_chain.h"
#include "texture/texture_format.h"

namespace {

constexpr int blockSizeFormat = 29;

// The part to take, if there is one.
std::optional<ePixelRegion> RegionToTake(unsigned width, unsigned height, const ePixelRegion* region) {
    constexpr auto highest = static_cast<unsigned>(std::numeric_limits<int>::max());
    if (width == 0 || height == 0 || width > highest || height > highest) {
        return std::nullopt;
    }
    const ePixelRegion whole = {0, 0, static_cast<int>(width) - 1, static_cast<int>(height) - 1};
    if (region == nullptr) {
        return whole;
    }
    const bool isWithin = region->left >= 0 && region->top >= 0 && region->left <= region->right &&
                          region->top <= region->bottom && region->right <= whole.right &&
                          region->bottom <= whole.bottom;
    return isWithin ? std::optional(*region) : std::nullopt;
}

bool SuitsBlocks(unsigned side) {
    return side == 1 || side == 2 || side % 4 == 0;
}

// Why the size can't be written, or compressDone.
int CheckSize(unsigned width, unsigned height, const eTextureFormat& format) {
    if (IsBlockCoding(format.coding) && !(SuitsBlocks(width) && SuitsBlocks(height))) {
        return format.number == blockSizeFormat ? compressBadBlockSize : compressBadSize;
    }
    const bool fitsHeader = width <= maxTextureSide && height <= maxTextureSide &&
                            LevelBytes(format.coding, format.pixelFormat.bitCount, width, height) <=
                                std::numeric_limits<std::uint32_t>::max();
    return fitsHeader ? compressDone : compressBadSize;
}

bool ModesAreOffered(const CompressionOptions& options) {
    return options.rescaleMode == 0 &&
           (options.g_mip_map_type == mipsGenerated || options.g_mip_map_type == mipsNone);
}

unsigned LevelCount(const eImageSource& image, const CompressionOptions& options) {
    if (options.g_mip_map_type == mipsNone) {
        return 1;
    }
    const unsigned full = FullLevelCount(image.Width(), image.Height());
    return options.g_specified_mip_maps > 0
               ? std::min(full, static_cast<unsigned>(options.g_specified_mip_maps))
               : full;
}

eDdsHeader HeaderOf(const eImageSource& image, const eTextureFormat& format,
                    const CompressionOptions& options, unsigned levelCount) {
    const bool speaksOfLevels = options.g_mip_map_type != mipsNone;
    eDdsHeader header;
    header.flags = speaksOfLevels ? ddsFlagsWithMips : ddsFlags;
    header.height = image.Height();
    header.width = image.Width();
    header.firstLevelBytes = static_cast<std::uint32_t>(
        LevelBytes(format.coding, format.pixelFormat.bitCount, image.Width(), image.Height()));
    header.mipCount = speaksOfLevels ? levelCount : 0;
    header.pixelFormat = format.pixelFormat;
    header.capabilities = levelCount > 1 ? ddsManyLevels : ddsOneLevel;
    return header;
}

int WriteHead(const eDdsHeader& header, const CompressionOptions& options, const eWriteBlock& writeBlock) {
    const int answer = writeBlock(ddsMagic.data(), ddsMagic.size(), nullptr, options.userValue);
    if (answer != 0) {
        return answer;
    }
    const eDdsHeaderBytes bytes = WriteDdsHeader(header);
    return writeBlock(bytes.data(), bytes.size(), nullptr, options.userValue);
}

void FillStrip(const eImageSource& image, std::size_t firstRow, unsigned count, ePixelImage& strip) {
    TakeRows(image, firstRow, count, strip);
}

void FillStrip(const eFloatImage& image, std::size_t firstRow, unsigned count, ePixelImage& strip) {
    RoundRows(image, firstRow, count, strip);
}

// Strip by strip, so that only the encoded bytes of a level need memory of its size.
template <class Image>
std::vector<std::uint8_t> EncodedLevel(const Image& image, const eTextureFormat& format,
                                       const CompressionOptions& options) {
    const auto bytesOfRows = [&](unsigned rows) {
        return static_cast<std::size_t>(
            LevelBytes(format.coding, format.pixelFormat.bitCount, image.Width(), rows));
    };
    std::vector<std::uint8_t> bytes(bytesOfRows(image.Height()));
    constexpr unsigned stripRows = 16;
    ePixelImage strip;
    for (unsigned row = 0; row < image.Height(); row += stripRows) {
        FillStrip(image, row, std::min(stripRows, image.Height() - row), strip);
        EncodeRows(strip, format, options.colorWeights, bytes.data() + bytesOfRows(row));
    }
    return bytes;
}

template <class Image>
int WriteLevel(const Image& image, unsigned level, const eTextureFormat& format,
               const CompressionOptions& options, const eWriteBlock& writeBlock) {
    const std::vector<std::uint8_t> bytes = EncodedLevel(image, format, options);
    const eMipInfo mipInfo = {level, image.Width(), image.Height()};
    return writeBlock(bytes.data(), bytes.size(), &mipInfo, options.userValue);
}

int WriteLevels(const eImageSource& image, unsigned levelCount, const eTextureFormat& format,
                const CompressionOptions& options, const eWriteBlock& writeBlock) {
    int answer = WriteLevel(image, 0, format, options, writeBlock);
    eFloatImage smaller;
    for (unsigned level = 1; level < levelCount && answer == 0; level++) {
        smaller = level == 1 ? HalvedImage(image) : HalvedImage(smaller);
        answer = WriteLevel(smaller, level, format, options, writeBlock);
    }
    return answer;
}

}  // namespace

int CompressImage(const std::uint8_t* pixels, unsigned width, unsigned height, int rowPitch, int pixelLayout,
                  const CompressionOptions& options, const eWriteBlock& writeBlock,
                  const ePixelRegion* region) {
    const std::optional<ePixelRegion> part = RegionToTake(width, height, region);
    if (pixels == nullptr || !part) {
        return compressBadSize;
    }
    const eTextureFormat* format = FindTextureFormat(options.g_texture_format);
    if (format == nullptr || !ModesAreOffered(options)) {
        return compressUnsupported;
    }
    const int refusal = CheckSize(part->Width(), part->Height(), *format);
    if (refusal != compressDone) {
        return refusal;
    }
    const eImageSource image = {pixels, rowPitch, pixelLayout, *part};
    const unsigned levelCount = LevelCount(image, options);
    const int answer = WriteHead(HeaderOf(image, *format, options, levelCount), options, writeBlock);
    return answer != 0 ? answer : WriteLevels(image, levelCount, *format, options, writeBlock);
}
