#include "inspect/bmp_view.h"

#include <array>
#include <cmath>

#include "material/textures/bmp_file.h"

namespace inspect {

namespace {

// Blue, green, red, alpha, each 0 to 255.
std::array<double, 4> ChannelMeans(const eTextureImage& image) {
    std::array<double, 4> sums{};
    for (std::size_t i = 0; i < image.pixels.size(); ++i) {
        sums[i % 4] += image.pixels[i];
    }
    const double count = static_cast<double>(image.pixels.size()) / 4;
    for (double& sum : sums) {
        sum = count > 0 ? std::round(sum / count) : 0;
    }
    return sums;
}

}  // namespace

eDescription DescribeBmp(std::span<const std::uint8_t> bytes, std::string& problem) {
    const auto picture = ReadBmp(bytes, problem);
    if (!picture) {
        return {};
    }
    const auto means = ChannelMeans(picture->image);
    return {{"kind", "picture"},
            {"bytes", bytes.size()},
            {"width", picture->image.width},
            {"height", picture->image.height},
            {"bitsPerPixel", picture->bitsPerPixel},
            {"meanRed", means[2]},
            {"meanGreen", means[1]},
            {"meanBlue", means[0]},
            {"meanAlpha", means[3]}};
}

}  // namespace inspect
