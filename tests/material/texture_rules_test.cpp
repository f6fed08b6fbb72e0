#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "material/natural_order.h"
#include "material/textures/bmp_file.h"
#include "material/textures/normal_map.h"

namespace {

std::vector<std::string> Sorted(const std::vector<std::string>& names) {
    std::vector<std::string> sorted;
    for (const std::size_t index : NaturalOrder(names)) {
        sorted.push_back(names[index]);
    }
    return sorted;
}

TEST(NaturalOrder, ComparesNumbersAsNumbers) {
    EXPECT_EQ(Sorted({"mat10", "mat2", "mat", "Mat3"}),
              (std::vector<std::string>{"Mat3", "mat", "mat2", "mat10"}));
    EXPECT_EQ(Sorted({"z", "\xE1"}), (std::vector<std::string>{"\xE1", "z"}));  // as signed bytes
    EXPECT_EQ(Sorted({"a01", "a1"}), (std::vector<std::string>{"a1", "a01"}));
    EXPECT_EQ(Sorted({"a99999999999999999999", "a100000000000000000000"}),
              (std::vector<std::string>{"a99999999999999999999", "a100000000000000000000"}));
}

// A record file must not depend on the order in which the materials came, also where the comparison of names
// with leading zeros says both ways.
TEST(NaturalOrder, DoesNotDependOnTheInput) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::vector<std::string> names;
        for (int i = 0; i < 6; ++i) {
            std::string name;
            for (int c = 0; c < 4; ++c) {
                name += "01ab~"[random() % 5];
            }
            names.push_back(name);
        }
        std::sort(names.begin(), names.end());
        names.erase(std::unique(names.begin(), names.end()), names.end());
        const std::vector<std::string> once = Sorted(names);
        std::shuffle(names.begin(), names.end(), random);
        EXPECT_EQ(Sorted(names), once);
    }
    // Both ways round the comparison puts a01z in front.
    EXPECT_EQ(Sorted({"a1b~", "a01z"}), (std::vector<std::string>{"a01z", "a1b~"}));
}

TEST(Bmp, FillsRowsAndReadsBack) {
    eTextureImage image(3, 2);
    std::iota(image.pixels.begin(), image.pixels.end(), std::uint8_t{1});
    const auto bytes = MakeBmp(image, 24);
    ASSERT_EQ(bytes.size(), 54U + 2 * 12U);
    EXPECT_EQ(bytes[0], 'B');
    EXPECT_EQ(bytes[2], 78);
    EXPECT_EQ(bytes[10], 54);
    EXPECT_EQ(bytes[28], 24);
    EXPECT_EQ((std::vector<std::uint8_t>(bytes.begin() + 54, bytes.begin() + 66)),
              (std::vector<std::uint8_t>{1, 2, 3, 5, 6, 7, 9, 10, 11, 0xFF, 0xFF, 0xFF}));
    std::string problem;
    const auto deep = ReadBmp(MakeBmp(image, 32), problem);
    ASSERT_TRUE(deep) << problem;
    EXPECT_EQ(deep->image.pixels, image.pixels);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        EXPECT_FALSE(ReadBmp({bytes.data(), length}, problem)) << length;
    }
    EXPECT_EQ(MakeBmp(eTextureImage(0, 0), 24).size(), 54U);
}

TEST(NormalMap, TurnsAPictureOver) {
    eTextureImage picture(1, 2);
    picture.pixels = {10, 20, 30, 40, 50, 60, 70, 80};
    const eTextureImage normals = NormalsFromPicture(picture);
    EXPECT_EQ(normals.pixels, (std::vector<std::uint8_t>{50, 195, 0, 70, 10, 235, 0, 30}));
}

}  // namespace
