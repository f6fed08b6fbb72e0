// The levels: how many, and that each averages the one above without losing or doubling a pixel.
#include "texture/mip_chain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace {

using testing::ElementsAre;

eImageSource Source(const std::vector<std::uint8_t>& rgba, int width, int height) {
    return {rgba.data(), 4 * width, pixelLayoutRgba, {0, 0, width - 1, height - 1}};
}

std::vector<std::uint8_t> Rounded(const eFloatImage& image) {
    ePixelImage strip;
    RoundRows(image, 0, image.height, strip);
    return strip.rgba;
}

TEST(MipChain, CountsLevelsDownToOnePixel) {
    EXPECT_EQ(FullLevelCount(256, 64), 9U);
    EXPECT_EQ(FullLevelCount(1, 1), 1U);
    EXPECT_EQ(FullLevelCount(2, 2), 2U);
    EXPECT_EQ(FullLevelCount(1, 12), 4U);
    EXPECT_EQ(FullLevelCount(65535, 3), 16U);
}

// Would catch: channels mixed up, rounding in between, a column left out on one of the paths.
TEST(MipChain, AveragesFourPixels) {
    const std::vector<std::uint8_t> pixels = {10, 20, 30, 40, 11, 24, 30, 41,  //
                                              10, 20, 30, 40, 10, 20, 30, 41,  //
                                              1,  2,  3,  4,  1,  2,  3,  4,   //
                                              10, 20, 30, 42, 10, 20, 30, 40,  //
                                              10, 20, 34, 40, 13, 20, 30, 40,  //
                                              2,  3,  4,  5,  2,  3,  4,  255};
    const eFloatImage half = HalvedImage(Source(pixels, 6, 2));
    ASSERT_EQ(half.width, 3U);
    ASSERT_EQ(half.height, 1U);
    EXPECT_THAT((std::array{half.pixels[0][0], half.pixels[0][1], half.pixels[0][2], half.pixels[0][3]}),
                ElementsAre(10.25F, 21.0F, 30.0F, 40.75F));
    EXPECT_THAT(Rounded(half), ElementsAre(10, 21, 30, 41, 11, 20, 31, 40, 2, 3, 4, 67));
}

// Would catch: a small level made from rounded ones, which drifts by one after a few levels.
TEST(MipChain, RoundsOnceOnly) {
    std::vector<std::uint8_t> pixels;
    for (int i = 0; i < 16 * 16; i++) {
        const auto value = static_cast<std::uint8_t>((i % 2 == 0 && i / 16 % 2 == 0) ? 103 : 101);
        pixels.insert(pixels.end(), {value, value, value, value});
    }
    eFloatImage level = HalvedImage(Source(pixels, 16, 16));
    while (level.width > 1) {
        level = HalvedImage(level);
    }
    EXPECT_FLOAT_EQ(level.pixels[0][0], 101.5F);
}

// An odd side has no pairs: would catch a last column that is left out, and shares that don't belong to the
// place of the pixel.
TEST(MipChain, SharesOddSidesByPlace) {
    std::vector<std::uint8_t> pixels(4 * 5 * 3);
    pixels[0] = 150;
    pixels[4 * 2 + 1] = 150;
    pixels[4 * (5 * 3 - 1) + 2] = 150;
    const eFloatImage half = HalvedImage(Source(pixels, 5, 3));
    ASSERT_EQ(half.pixels.size(), 2U);
    const auto texel = [&](std::size_t x) {
        return std::array{half.pixels[x][0], half.pixels[x][1], half.pixels[x][2]};
    };
    EXPECT_THAT(texel(0), ElementsAre(20.0F, 10.0F, 0.0F));
    EXPECT_THAT(texel(1), ElementsAre(0.0F, 10.0F, 20.0F));
}

}  // namespace
