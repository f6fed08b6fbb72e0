// The file as a whole: head, levels, refusals, and the ways in which a caller brings an image.
#include "texture/compress_image.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>

#include "texture/dds_reader.h"
#include "texture/file_collector.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

using eBytes = std::vector<std::uint8_t>;

// R, G, B, A pixels that differ from each other.
eBytes Pixels(unsigned width, unsigned height) {
    eBytes pixels(std::size_t{4} * width * height);
    for (std::size_t i = 0; i < pixels.size(); i++) {
        pixels[i] = static_cast<std::uint8_t>(i * 37 + i / 64 * 11);
    }
    return pixels;
}

struct eResult {
    int answer;
    eFileCollector file;
};

eResult Compress(unsigned width, unsigned height, CompressionOptions options) {
    const eBytes pixels = Pixels(width, height);
    eResult result{0, {}};
    result.answer = CompressImage(pixels.data(), width, height, static_cast<int>(4 * width), pixelLayoutRgba,
                                  options, result.file.Callback());
    return result;
}

CompressionOptions Format(int number) {
    CompressionOptions options;
    options.g_texture_format = number;
    return options;
}

// The bytes of a list of numbers.
eBytes Numbers(const std::vector<std::uint32_t>& numbers) {
    eBytes bytes;
    for (const std::uint32_t number : numbers) {
        for (int shift = 0; shift < 32; shift += 8) {
            bytes.push_back(static_cast<std::uint8_t>(number >> shift));
        }
    }
    return bytes;
}

// Would catch: a field in the wrong place, a wrong flag, width and height changed over, and a mip count where
// the file is not to speak of levels.
TEST(CompressImage, WritesTheHeadOfTheFile) {
    const auto headOf = [](unsigned width, unsigned height, int mipMapType) {
        CompressionOptions options = Format(3);
        options.g_mip_map_type = mipMapType;
        const eBytes file = Compress(width, height, options).file.bytes;
        return eBytes(file.begin(), file.begin() + 128);
    };
    const auto head = [](std::uint32_t flags, std::uint32_t width, std::uint32_t height, std::uint32_t bytes,
                         std::uint32_t mipCount, std::uint32_t capabilities) {
        std::vector<std::uint32_t> numbers = {0x20534444, 124, flags, height, width, bytes, 0, mipCount};
        numbers.resize(19);
        numbers.insert(numbers.end(), {32, 4, 0x35545844, 0, 0, 0, 0, 0, capabilities, 0, 0, 0, 0});
        return Numbers(numbers);
    };
    EXPECT_EQ(headOf(256, 64, mipsGenerated), head(0xa1007, 256, 64, 16384, 9, 0x401008));
    EXPECT_EQ(headOf(1, 1, mipsGenerated), head(0xa1007, 1, 1, 16, 1, 0x1000));
    EXPECT_EQ(headOf(8, 8, mipsNone), head(0x81007, 8, 8, 64, 0, 0x1000));
}

// Would catch: levels beyond the number that is asked for, or that there are.
TEST(CompressImage, MakesTheLevelsThatAreAskedFor) {
    for (const auto& [type, count, bytes] :
         {std::tuple{mipsNone, 0, 64}, {mipsGenerated, 2, 64 + 16}, {mipsGenerated, 20, 64 + 3 * 16}}) {
        CompressionOptions options = Format(3);
        options.g_mip_map_type = type;
        options.g_specified_mip_maps = count;
        EXPECT_EQ(Compress(8, 8, options).file.bytes.size(), 128U + static_cast<unsigned>(bytes));
    }
}

// Would catch: mask tables that differ from what the numbers stand for, a wrong size of the first level.
TEST(CompressImage, DescribesEachFormat) {
    struct eExpected {
        int number;
        std::uint32_t firstLevelBytes;
        std::array<std::uint32_t, 7> pixelFormat;
    };
    constexpr std::uint32_t dxt1 = 0x31545844;
    constexpr std::uint32_t dxt3 = 0x33545844;
    constexpr std::uint32_t dxt5 = 0x35545844;
    constexpr std::uint32_t ati2 = 0x32495441;
    const std::vector<eExpected> table = {
        {0, 32, {4, dxt1, 0, 0, 0, 0, 0}},
        {1, 32, {4, dxt1, 0, 0, 0, 0, 0}},
        {2, 64, {4, dxt3, 0, 0, 0, 0, 0}},
        {3, 64, {4, dxt5, 0, 0, 0, 0, 0}},
        {24, 64, {4, dxt5, 0, 0, 0, 0, 0}},
        {29, 64, {4, ati2, 0, 0, 0, 0, 0}},
        {4, 128, {0x41, 0, 16, 0xf00, 0xf0, 0xf, 0xf000}},
        {5, 128, {0x41, 0, 16, 0x7c00, 0x3e0, 0x1f, 0x8000}},
        {6, 128, {0x40, 0, 16, 0xf800, 0x7e0, 0x1f, 0}},
        {7, 256, {0x41, 0, 32, 0xff0000, 0xff00, 0xff, 0xff000000}},
        {8, 192, {0x40, 0, 24, 0xff0000, 0xff00, 0xff, 0}},
        {9, 128, {0x40, 0, 16, 0x7c00, 0x3e0, 0x1f, 0}},
        {13, 64, {0x2, 0, 8, 0, 0, 0, 0xff}},
        {16, 128, {0x20001, 0, 16, 0xff, 0, 0, 0xff00}},
        {20, 64, {0x20000, 0, 8, 0xff, 0, 0, 0}},
        {25, 256, {0x40, 0, 32, 0xff0000, 0xff00, 0xff, 0}},
        {27, 256, {0x40, 0, 32, 0xffff, 0xffff0000, 0, 0}},
        {30, 128, {0x20000, 0, 16, 0xffff, 0, 0, 0}},
    };
    for (const eExpected& expected : table) {
        SCOPED_TRACE(expected.number);
        const eResult result = Compress(8, 8, Format(expected.number));
        ASSERT_EQ(result.answer, compressDone);
        const eBytes pixelFormat(result.file.bytes.begin() + 80, result.file.bytes.begin() + 108);
        EXPECT_THAT(pixelFormat,
                    ElementsAreArray(Numbers({expected.pixelFormat.begin(), expected.pixelFormat.end()})));
        EXPECT_EQ(result.file.calls.at(2).byteCount, expected.firstLevelBytes);
        EXPECT_THAT(eBytes(result.file.bytes.begin() + 20, result.file.bytes.begin() + 24),
                    ElementsAreArray(Numbers({expected.firstLevelBytes})));
    }
}

// Would catch: levels in a wrong order or size, a mipInfo for the head, a lost userValue.
TEST(CompressImage, BringsTheLevelsFromTheLargestDown) {
    CompressionOptions options = Format(3);
    options.userValue = 77;
    const eResult result = Compress(16, 4, options);
    ASSERT_EQ(result.answer, compressDone);
    using eCall = std::tuple<std::size_t, int, unsigned, unsigned>;
    std::vector<eCall> calls;
    for (const eWriteCall& call : result.file.calls) {
        const eMipInfo mip = call.mipInfo.value_or(eMipInfo{});
        calls.emplace_back(call.byteCount, call.mipInfo ? static_cast<int>(mip.level) : -1, mip.width,
                           mip.height);
        EXPECT_EQ(call.userValue, 77);
    }
    EXPECT_THAT(calls,
                ElementsAre(eCall{4, -1, 0, 0}, eCall{124, -1, 0, 0}, eCall{64, 0, 16, 4}, eCall{32, 1, 8, 2},
                            eCall{16, 2, 4, 1}, eCall{16, 3, 2, 1}, eCall{16, 4, 1, 1}));
    EXPECT_EQ(Compress(2, 2, Format(3)).file.calls.size(), 2 + 2);
}

// Would catch: a head written before the refusal, the wrong failure, a legal side refused.
TEST(CompressImage, RefusesSizesThatBlocksCannotHold) {
    for (const int number : {0, 1, 2, 3, 24, 29}) {
        SCOPED_TRACE(number);
        for (const auto& [width, height] : {std::pair{6U, 8U}, {8U, 6U}, {3U, 4U}, {1U, 5U}}) {
            const eResult result = Compress(width, height, Format(number));
            EXPECT_EQ(result.answer, number == 29 ? compressBadBlockSize : compressBadSize);
            EXPECT_THAT(result.file.calls, IsEmpty());
        }
        for (const auto& [width, height] : {std::pair{4U, 2U}, {1U, 1U}, {12U, 4U}, {1U, 8U}}) {
            EXPECT_EQ(Compress(width, height, Format(number)).answer, compressDone);
        }
    }
    for (const int number : {4, 5, 6, 7, 8, 9, 13, 16, 20, 25, 27, 30}) {
        EXPECT_EQ(Compress(6, 8, Format(number)).file.calls.size(), 2 + 4) << number;
    }
}

// The sides beyond the first two are those whose bytes the header can't count: nothing of the image, which is
// smaller, may be touched.
TEST(CompressImage, RefusesWhatHasNoPixelsAndWhatItDoesNotOffer) {
    const eBytes pixels = Pixels(8, 8);
    eFileCollector file;
    const auto compress = [&](const std::uint8_t* source, unsigned width, unsigned height,
                              const CompressionOptions& options) {
        return CompressImage(source, width, height, 32, pixelLayoutRgba, options, file.Callback());
    };
    EXPECT_EQ(compress(nullptr, 8, 8, Format(3)), compressBadSize);
    for (const auto& [width, height, number] : {std::tuple{0U, 8U, 3},
                                                {8U, 0U, 10},
                                                {0x20000U, 4U, 3},
                                                {0x10000U, 0x10000U, 7},
                                                {0xfffffffcU, 0xfffffffcU, 3}}) {
        EXPECT_EQ(compress(pixels.data(), width, height, Format(number)), compressBadSize);
    }
    for (const int number : {10, 11, 12, 14, 15, 17, 18, 19, 21, 22, 23, 26, 28, 31, -1}) {
        EXPECT_EQ(compress(pixels.data(), 8, 8, Format(number)), compressUnsupported) << number;
    }
    CompressionOptions rescaled = Format(3);
    rescaled.rescaleMode = 1;
    EXPECT_EQ(compress(pixels.data(), 8, 8, rescaled), compressUnsupported);
    CompressionOptions withLevels = Format(3);
    withLevels.g_mip_map_type = 31;
    EXPECT_EQ(compress(pixels.data(), 8, 8, withLevels), compressUnsupported);
    EXPECT_THAT(file.calls, IsEmpty());
}

// Would catch: a full disk that goes unnoticed, further writes behind the failed one.
TEST(CompressImage, StopsAtTheFirstBadAnswer) {
    const eBytes pixels = Pixels(8, 8);
    for (std::size_t call = 0; call < 6; call++) {
        eFileCollector file;
        file.badCall = call;
        file.badAnswer = -5;
        EXPECT_EQ(CompressImage(pixels.data(), 8, 8, 32, pixelLayoutRgba, Format(3), file.Callback()), -5);
        EXPECT_EQ(file.calls.size(), call + 1);
    }
}

// The first level of a file, by default one of 32 bits, pixel by pixel as R, G, B, A.
eBytes FirstLevel(const eBytes& source, unsigned width, unsigned height, int rowPitch, int layout,
                  const ePixelRegion* region = nullptr, std::size_t firstRow = 0, int number = 7) {
    eFileCollector file;
    EXPECT_EQ(CompressImage(source.data() + firstRow, width, height, rowPitch, layout, Format(number),
                            file.Callback(), region),
              compressDone);
    return DecodeDdsLevel(file.bytes, ReadDds(file.bytes), 0).rgba;
}

// Would catch: channels changed over, alpha taken from the next pixel, a pitch that is not heeded.
TEST(CompressImage, KnowsTheLayouts) {
    const eBytes source = {1, 2, 3, 4, 5, 6, 7, 8, 99, 99, 11, 12, 13, 14, 15, 16, 17, 18};
    EXPECT_THAT(FirstLevel(source, 2, 2, 10, pixelLayoutBgra),
                ElementsAre(3, 2, 1, 4, 7, 6, 5, 8, 13, 12, 11, 14, 17, 16, 15, 18));
    EXPECT_THAT(FirstLevel(source, 2, 2, 10, pixelLayoutRgb),
                ElementsAre(1, 2, 3, 255, 4, 5, 6, 255, 11, 12, 13, 255, 14, 15, 16, 255));
    EXPECT_THAT(FirstLevel(source, 2, 2, 10, pixelLayoutBgr),
                ElementsAre(3, 2, 1, 255, 6, 5, 4, 255, 13, 12, 11, 255, 16, 15, 14, 255));
    EXPECT_THAT(FirstLevel(source, 2, 2, 10, pixelLayoutGrey),
                ElementsAre(1, 1, 1, 255, 2, 2, 2, 255, 11, 11, 11, 255, 12, 12, 12, 255));
    for (const int layout : {0, 5, -3}) {
        EXPECT_THAT(FirstLevel(source, 2, 2, 10, layout),
                    ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 14, 15, 16, 17, 18));
    }
    EXPECT_THAT(FirstLevel(source, 1, 2, -10, pixelLayoutGrey, nullptr, 10),
                ElementsAre(11, 11, 11, 255, 1, 1, 1, 255));
}

// Strips of rows are encoded one by one: would catch rows that are lost or taken twice between them.
TEST(CompressImage, CoversEveryPixel) {
    // One grey per block: the blocks come out exact in alpha, so each must stand in its own place.
    const unsigned width = 20;
    const unsigned height = 52;
    eBytes blocks(std::size_t{4} * width * height);
    for (std::size_t i = 0; i < blocks.size(); i++) {
        blocks[i] = static_cast<std::uint8_t>(i / 4 % width / 4 * 13 + i / 4 / width / 4 * 17);
    }
    for (const int number : {3, 7}) {
        const eBytes decoded =
            FirstLevel(blocks, width, height, 4 * width, pixelLayoutRgba, nullptr, 0, number);
        for (std::size_t i = 3; i < blocks.size(); i += 4) {
            ASSERT_EQ(decoded[i], blocks[i]) << "format " << number << ", pixel " << i / 4;
        }
    }
}

// Catches blocks that take the code of one which is unlike them. The 800 blocks are of 200 kinds, some differ
// from their kind in one alpha alone, and some kinds have a hash in common.
TEST(CompressImage, GivesEachBlockItsOwnCode) {
    constexpr int width = 1600, height = 8;
    eBytes pixels(std::size_t{4} * width * height);
    for (std::size_t i = 0; i < pixels.size(); i++) {
        const std::size_t column = i / 4 % width, row = i / 4 / width;
        const std::size_t kind = (column / 4 + 7 * (row / 4)) % 250 * 977 % 200;
        pixels[i] = static_cast<std::uint8_t>(
            (kind * 64 + row % 4 * 16 + column % 4 * 4 + i % 4) * 2654435761U >> 13);
    }
    for (std::size_t i = 3; i < pixels.size() / 8; i += 64) {
        pixels[i] = static_cast<std::uint8_t>(pixels[i] + 99);
    }
    CompressionOptions options = Format(3);
    options.g_mip_map_type = mipsNone;
    const auto encoded = [&](const ePixelRegion& region) {
        eFileCollector file;
        CompressImage(pixels.data(), width, height, 4 * width, pixelLayoutRgba, options, file.Callback(),
                      &region);
        return eBytes(file.bytes.begin() + 128, file.bytes.end());
    };
    const eBytes whole = encoded({0, 0, width - 1, height - 1});
    for (int block = 0; block < width / 4 * height / 4; block++) {
        const int x = 4 * (block % (width / 4)), y = 4 * (block / (width / 4));
        const auto first = whole.begin() + 16 * std::ptrdiff_t{block};
        EXPECT_EQ(eBytes(first, first + 16), encoded({x, y, x + 3, y + 3})) << block;
    }
}

}  // namespace
