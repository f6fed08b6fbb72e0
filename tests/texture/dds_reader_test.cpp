// Reading: what was written comes back, and no file, however it lies, harms the reader.
#include "texture/dds_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

#include "texture/file_collector.h"

namespace {

using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

using eBytes = std::vector<std::uint8_t>;

eBytes DdsOf(const ePixelImage& image, int number) {
    CompressionOptions options;
    options.g_texture_format = number;
    eFileCollector file;
    EXPECT_EQ(CompressImage(image.rgba.data(), image.width, image.height, static_cast<int>(4 * image.width),
                            pixelLayoutRgba, options, file.Callback()),
              compressDone);
    return file.bytes;
}

ePixelImage Gradient() {
    ePixelImage image;
    image.Resize(16, 8);
    for (std::size_t i = 0; i < image.rgba.size(); i++) {
        const std::size_t x = i / 4 % 16;
        const std::size_t y = i / 64;
        const std::array<std::size_t, 4> channels = {40 + 4 * x, 200 - 4 * x, 90 + 4 * x, 250 - 12 * y};
        image.rgba[i] = static_cast<std::uint8_t>(channels[i % 4]);
    }
    return image;
}

void SetNumber(eBytes& file, std::size_t offset, std::uint32_t number) {
    for (std::size_t byte = 0; byte < 4; byte++) {
        file[offset + byte] = static_cast<std::uint8_t>(number >> (8 * byte));
    }
}

// Would catch: a layout that writer and reader see in different ways, channels that get lost.
TEST(DdsReader, ReadsEveryFormatBack) {
    struct eFormatBound {
        int number;
        // The largest difference in R, G, B, A; -1: the channel is not kept.
        std::array<int, 4> bound;
    };
    const ePixelImage image = Gradient();
    for (const eFormatBound& format : std::vector<eFormatBound>{{0, {9, 7, 9, -1}},
                                                                {2, {9, 7, 9, 9}},
                                                                {3, {9, 7, 9, 3}},
                                                                {4, {9, 9, 9, 9}},
                                                                {5, {5, 5, 5, 128}},
                                                                {6, {5, 3, 5, -1}},
                                                                {7, {0, 0, 0, 0}},
                                                                {8, {0, 0, 0, -1}},
                                                                {9, {5, 5, 5, -1}},
                                                                {13, {-1, -1, -1, 0}},
                                                                {25, {0, 0, 0, -1}},
                                                                {27, {0, 0, -1, -1}},
                                                                {29, {1, 1, -1, -1}}}) {
        SCOPED_TRACE(format.number);
        const eBytes file = DdsOf(image, format.number);
        const eDdsFile dds = ReadDds(file);
        ASSERT_THAT(dds.problems, IsEmpty());
        ASSERT_THAT(dds.levels, SizeIs(5));
        const ePixelImage decoded = DecodeDdsLevel(file, dds, 0);
        ASSERT_EQ(decoded.rgba.size(), image.rgba.size());
        for (std::size_t i = 0; i < image.rgba.size(); i++) {
            const int bound = format.bound[i % 4];
            if (bound >= 0) {
                ASSERT_LE(std::abs(decoded.rgba[i] - image.rgba[i]), bound) << "byte " << i;
            } else {
                ASSERT_EQ(decoded.rgba[i], i % 4 == 3 ? 255 : 0) << "byte " << i;
            }
        }
        EXPECT_EQ(DecodeDdsLevel(file, dds, 4).rgba.size(), 4U);
    }
}

TEST(DdsReader, SaysWhatIsWrongAndWhere) {
    const eBytes sound = DdsOf(Gradient(), 3);
    const auto problemOf = [&](std::size_t offset, std::uint32_t lie) {
        eBytes file = sound;
        SetNumber(file, offset, lie);
        const eDdsFile dds = ReadDds(file);
        EXPECT_THAT(dds.problems, SizeIs(1));
        return dds.problems.at(0);
    };
    const auto says = [](std::size_t offset, const char* text) {
        return testing::AllOf(Field(&eDdsProblem::offset, offset),
                              Field(&eDdsProblem::text, HasSubstr(text)));
    };
    EXPECT_THAT(problemOf(0, 0x20504444), says(0, "no DDS file"));
    EXPECT_THAT(problemOf(4, 120), says(4, "header size is 120, not 124"));
    EXPECT_THAT(problemOf(12, 30000), says(128, "level 0 of 16 by 30000 takes 480000 bytes, the file has"));
    EXPECT_THAT(problemOf(16, 0), says(16, "width is 0"));
    EXPECT_THAT(problemOf(20, 1), says(20, "the header gives the first level 1 bytes, its size takes 128"));
    EXPECT_THAT(problemOf(28, 9), says(28, "mip count 9, but the size has 5 levels only"));
    EXPECT_THAT(problemOf(28, 1), says(128 + 128, "bytes behind the last level"));
    EXPECT_THAT(problemOf(84, 0x30315844), says(76, "unknown pixel format: DX10"));
    EXPECT_THAT(problemOf(84, 0x75), says(76, "unknown pixel format: FourCC 0x75"));
    EXPECT_THAT(problemOf(112, 0x200), says(112, "cube maps"));
}

// Files of other tools: other orders of channels than ours.
TEST(DdsReader, ReadsPackedPixelsWithAnyMasks) {
    ePixelImage image;
    image.Resize(1, 1);
    image.rgba = {1, 2, 3, 4};
    eBytes file = DdsOf(image, 7);
    SetNumber(file, 92, 0xff);
    SetNumber(file, 100, 0xff0000);
    EXPECT_THAT(DecodeDdsLevel(file, ReadDds(file), 0).rgba, ElementsAre(3, 2, 1, 4));
    EXPECT_EQ(PixelFormatName(ReadDds(file).header.pixelFormat),
              "32 bits, masks 0xff 0xff00 0xff0000 0xff000000");
    SetNumber(file, 92, 0xf0f);
    EXPECT_THAT(ReadDds(file).levels, IsEmpty());
}

}  // namespace
