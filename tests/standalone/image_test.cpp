#include "standalone/pictures/image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "base/ansi.h"
#include "standalone/pictures/picture_problem.h"
#include "support/pictures.h"

namespace {

using namespace standalone;

eDecodedImage Decode(const std::string& file) {
    return DecodeImage({reinterpret_cast<const std::uint8_t*>(file.data()), file.size()});
}

// Upper row red and green, lower row blue and white.
const support::ePicture kFour{2, 2, 3, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255}};

void ExpectColor(const host::AColor& color, float r, float g, float b, float a = 1) {
    EXPECT_NEAR(color.r, r, 0.02F);
    EXPECT_NEAR(color.g, g, 0.02F);
    EXPECT_NEAR(color.b, b, 0.02F);
    EXPECT_NEAR(color.a, a, 0.02F);
}

// Would catch rows that run the wrong way, a format left out, and texels that are not the file's.
TEST(Image, EveryFormatShowsItsTexelsWithVUpward) {
    const support::ePicture turned{2, 2, 3, {0, 0, 255, 255, 255, 255, 255, 0, 0, 0, 255, 0}};
    const std::string topDown =
        support::Patched(support::Bmp(turned), {{22, -2}, {23, -1}, {24, -1}, {25, -1}});
    // A tile of 16 texels, of which the picture shows the corner.
    support::ePicture tile{16, 16, 3, std::vector<std::uint8_t>(16 * 16 * 3)};
    std::ranges::copy_n(kFour.values.begin(), 6, tile.values.begin());
    std::ranges::copy_n(kFour.values.begin() + 6, 6, tile.values.begin() + 16 * 3);
    const std::size_t at = 10 + tile.values.size();  // of the fields, 12 bytes each
    const std::string tiled = support::Patched(support::Tif(tile), {{at + 8, 2},
                                                                    {at + 20, 2},
                                                                    {at + 36, 0x42},
                                                                    {at + 44, 16},
                                                                    {at + 60, 0x44},
                                                                    {at + 84, 0x43},
                                                                    {at + 96, 0x45}});
    for (const std::string& file : {support::Png(kFour), support::Bmp(kFour), support::Tga(kFour), topDown,
                                    support::Tif(kFour), tiled, support::Dds(kFour)}) {
        const eDecodedImage decoded = Decode(file);
        ASSERT_NE(decoded.image, nullptr) << decoded.problem.english;
        EXPECT_FALSE(decoded.image->HasAlpha());
        ExpectColor(decoded.image->Nearest(0.25F, 0.75F), 1, 0, 0);
        ExpectColor(decoded.image->Nearest(0.75F, 0.75F), 0, 1, 0);
        ExpectColor(decoded.image->Nearest(0.25F, 0.25F), 0, 0, 1);
        ExpectColor(decoded.image->Nearest(0.75F, 0.25F), 1, 1, 1);
    }
    const support::ePicture grey{16, 16, 3, std::vector<std::uint8_t>(16 * 16 * 3, 100)};
    ASSERT_NE(Decode(support::Jpg(grey)).image, nullptr);
    ExpectColor(Decode(support::Jpg(grey)).image->Nearest(0.5F, 0.5F), 100 / 255.F, 100 / 255.F, 100 / 255.F);
}

// Would catch grey that is only red, and alpha lost, invented, or taken from a format that has it idle.
TEST(Image, GreyAndAlphaComeThrough) {
    const eDecodedImage grey = Decode(support::Png({1, 1, 1, {51}}));
    ExpectColor(grey.image->Nearest(0, 0), 0.2F, 0.2F, 0.2F);
    EXPECT_FALSE(grey.image->HasAlpha());
    for (const auto write : {support::Tga, support::Tif, support::Dds}) {
        const eDecodedImage alpha = Decode(write({1, 1, 4, {255, 0, 0, 51}}));
        ExpectColor(alpha.image->Nearest(0, 0), 1, 0, 0, 0.2F);
        EXPECT_TRUE(alpha.image->HasAlpha());
    }
    for (const auto write : {support::Png, support::Tif}) {
        EXPECT_TRUE(Decode(write({1, 1, 2, {9, 255}})).image->HasAlpha());
    }
    for (const auto write : {support::Bmp, support::Dds}) {
        EXPECT_FALSE(Decode(write({1, 1, 4, {255, 0, 0, 255}})).image->HasAlpha());
    }
}

// A psd file of one row, planes of 16 bits without compression.
std::string Psd16(const std::vector<std::vector<std::uint16_t>>& planes) {
    const auto word = [](std::size_t value) {
        return std::string{static_cast<char>(value >> 8), static_cast<char>(value)};
    };
    const auto number = [&](std::size_t value) { return word(value >> 16) + word(value); };
    std::string file = "8BPS" + word(1) + std::string(6, '\0') + word(planes.size()) + number(1) +
                       number(planes.front().size()) + word(16) + word(3);
    file += number(0) + number(0) + number(0) + word(0);
    for (const std::vector<std::uint16_t>& plane : planes) {
        for (const std::uint16_t value : plane) {
            file += word(value);
        }
    }
    return file;
}

// Would catch 16 bits cut to 8, and the psd and gif readers left out.
TEST(Image, DeepAndIndexedPicturesAreRead) {
    const eDecodedImage deep = Decode(Psd16({{0x8000, 0x0001}, {0, 0}, {0xFFFF, 0}}));
    ASSERT_NE(deep.image, nullptr) << deep.problem.english;
    EXPECT_FLOAT_EQ(deep.image->Nearest(0.1F, 0).r, 0x8000 / 65535.F);
    EXPECT_FLOAT_EQ(deep.image->Nearest(0.9F, 0).r, 1 / 65535.F);
    EXPECT_FLOAT_EQ(deep.image->Nearest(0.1F, 0).b, 1);

    const std::string gif("GIF89a\1\0\1\0\x80\0\0\xFF\x80\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;", 35);
    const eDecodedImage indexed = Decode(gif);
    ASSERT_NE(indexed.image, nullptr) << indexed.problem.english;
    ExpectColor(indexed.image->Nearest(0, 0), 1, 0.5F, 0);
    EXPECT_FALSE(indexed.image->HasAlpha());
}

// Would catch samples that are off by half a texel, do not wrap, or sample the texel beside at the edges.
TEST(Image, SamplesLieWhereTexelsAre) {
    const eDecodedImage decoded = Decode(support::Png({4, 1, 1, {0, 85, 170, 255}}));
    const eImage& image = *decoded.image;
    EXPECT_FLOAT_EQ(image.Nearest(0.249F, 0.5F).r, 0);
    EXPECT_FLOAT_EQ(image.Nearest(0.25F, 0.5F).r, 85 / 255.F);
    EXPECT_FLOAT_EQ(image.Nearest(1.25F, -3.5F).r, 85 / 255.F);
    EXPECT_FLOAT_EQ(image.Nearest(-0.01F, 0.5F).r, 1);
    EXPECT_FLOAT_EQ(image.Nearest(-1e-9F, 0.5F).r, 1);
    EXPECT_FLOAT_EQ(image.Bilinear(0.375F, 0.5F).r, 85 / 255.F) << "the middle of a texel is the texel";
    EXPECT_FLOAT_EQ(image.Bilinear(0.5F, 0.123F).r, 127.5F / 255);
    EXPECT_FLOAT_EQ(image.Bilinear(0, 0.5F).r, 0.5F) << "between the last and the first";
    EXPECT_FLOAT_EQ(image.Bilinear(0.9375F, 0.5F).r, 0.75F);
    const float none = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FLOAT_EQ(image.Nearest(none, none).r, 0) << "coordinates of a broken mesh";
    image.Bilinear(none, std::numeric_limits<float>::infinity());
}

// Would catch memory taken for a size that only the header promises.
TEST(Image, AHeaderThatPromisesMoreThanTheFileHoldsIsRefused) {
    std::string big = support::Png(kFour);
    for (const std::size_t offset : {18U, 22U}) {
        big[offset] = '\x75';  // 0x7530 is 30000
        big[offset + 1] = '\x30';
    }
    EXPECT_EQ(Decode(big).problem, UnreadablePicture());
    const std::string tif = support::Patched(support::Tif(kFour), {{33, 1}});
    EXPECT_NE(Decode(tif).problem.english.find("16777218 by 2 "), std::string::npos);
}

// Would catch broken tables handed on to the image library, which writes behind its own memory then, and
// missing ones, for which it takes what lies there.
TEST(Image, HuffmanTablesThatAreBrokenOrMissingAreRefused) {
    const eBilingual problem = UnreadablePicture();
    std::string file = support::Jpg({1, 1, 1, {9}});
    const std::size_t table = file.find("\xFF\xC4");
    ASSERT_NE(table, std::string::npos);
    std::string withoutTable = file;
    withoutTable[table + 1] = '\xFE';  // a comment
    EXPECT_EQ(Decode(withoutTable).problem, problem);
    for (std::size_t length = 5; length < 8; ++length) {
        file[table + length] = '\xFF';
    }
    EXPECT_EQ(Decode(file).problem, problem);
    EXPECT_EQ(Decode("\xFF" + file).problem, problem);
}

// Would catch the missing end of a file read as zeros, in each format and at every length.
TEST(Image, AFileThatEndsEarlyIsRefused) {
    support::ePicture noise{24, 24, 3, {}};
    for (int i = 0; i < 24 * 24 * 3; ++i) {
        noise.values.push_back(static_cast<std::uint8_t>(i * 7919 >> 3));
    }
    for (const std::string& file : {support::Png(noise), support::Jpg(noise), support::Bmp(noise),
                                    support::Tga(noise), support::Tif(noise), support::Dds(noise)}) {
        ASSERT_NE(Decode(file).image, nullptr) << Decode(file).problem.english;
        for (std::size_t length = 0; length < file.size(); ++length) {
            const eDecodedImage decoded = Decode(file.substr(0, length));
            EXPECT_EQ(decoded.image, nullptr) << length << " of " << file.size();
            EXPECT_FALSE(decoded.problem.IsEmpty());
        }
    }
}

}  // namespace
