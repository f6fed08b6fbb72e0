#include "inspect/png_file.h"

#include <gtest/gtest.h>

#include <vector>

#include "inspect/inspect.h"
#include "material/textures/bmp_file.h"
#include "standalone/pictures/image.h"

namespace {

// Catches a picture that comes out, or is described, upside down or with its channels changed over, and a
// crash for want of one.
TEST(PngFile, ShowsAPictureAsItIs) {
    eTextureImage image(1, 2);
    image.pixels = {0, 51, 255, 102, 204, 0, 0, 255};
    eBilingual problem;
    const std::string png = inspect::PictureAsPng(MakeBmp(image, 32), problem);
    const auto decoded =
        standalone::DecodeImage({reinterpret_cast<const std::uint8_t*>(png.data()), png.size()}).image;
    ASSERT_NE(decoded, nullptr) << problem.english;
    const host::AColor lower = decoded->Nearest(0.5F, 0.25F);
    EXPECT_EQ((std::vector{lower.r, lower.g, lower.b, lower.a}), (std::vector<float>{1, 0.2F, 0, 0.4F}));
    EXPECT_EQ(decoded->Nearest(0.5F, 0.75F).b, 0.8F);
    const auto told = inspect::InspectContent("a.bmp", MakeBmp(image, 32)).description;
    EXPECT_EQ((std::vector<int>{told["meanRed"], told["meanGreen"], told["meanBlue"], told["meanAlpha"]}),
              (std::vector<int>{128, 26, 102, 179}));
    for (const std::vector<std::uint8_t>& other :
         {std::vector<std::uint8_t>{}, {'B', 'M'}, {'{', '}'}, MakeBmp(eTextureImage(0, 0), 24)}) {
        problem = {};
        EXPECT_EQ(inspect::PictureAsPng(other, problem), "");
        EXPECT_FALSE(problem.IsEmpty());
    }
}

}  // namespace
