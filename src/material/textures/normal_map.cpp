#include "material/textures/normal_map.h"

#include <cstring>

#include "host/values.h"

namespace {

enum eChannel { kBlue = 0, kGreen = 1, kRed = 2, kAlpha = 3 };

std::uint8_t NormalByte(float component) {
    return static_cast<std::uint8_t>((component + 1) * 0.5F * 255);
}

// Four bytes at once, little-endian: blue stays, green is turned round, red goes, and alpha is what red was.
std::uint32_t NormalPixel(std::uint32_t pixel) {
    return (pixel & 0x000000FFU) | (~pixel & 0x0000FF00U) | ((pixel & 0x00FF0000U) << 8);
}

// A row of the height field with an element more at both ends, taken from the opposite end.
std::vector<float> WrappedRow(const eTextureRows& heights, int y) {
    std::vector<std::uint8_t> pixels(heights.RowBytes());
    heights.fill((y + heights.height) % heights.height, pixels);
    std::vector<float> wrapped(static_cast<std::size_t>(heights.width) + 2);
    for (int x = -1; x <= heights.width; ++x) {
        const int column = (x + heights.width) % heights.width;
        wrapped[static_cast<std::size_t>(x + 1)] =
            static_cast<float>(pixels[4 * static_cast<std::size_t>(column) + kRed]) / 255.0F;
    }
    return wrapped;
}

}  // namespace

eTextureImage NormalsFromPicture(const eTextureRows& picture) {
    eTextureImage normals(picture.width, picture.height);
    const std::size_t rowBytes = picture.RowBytes();
    for (int y = 0; y < picture.height; ++y) {
        std::uint8_t* target = normals.Pixel(0, picture.height - 1 - y);
        picture.fill(y, {target, rowBytes});
        for (std::size_t i = 0; i < rowBytes; i += 4) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, target + i, sizeof pixel);
            pixel = NormalPixel(pixel);
            std::memcpy(target + i, &pixel, sizeof pixel);
        }
    }
    return normals;
}

eTextureImage NormalsFromHeights(const eTextureRows& heights) {
    eTextureImage normals(heights.width, heights.height);
    if (normals.pixels.empty()) {
        return normals;
    }
    std::vector<float> before = WrappedRow(heights, -1);
    std::vector<float> row = WrappedRow(heights, 0);
    for (int y = 0; y < heights.height; ++y) {
        const std::vector<float> after = WrappedRow(heights, y + 1);
        for (int x = 0; x < heights.width; ++x) {
            const auto left = static_cast<std::size_t>(x);
            const std::size_t here = left + 1;
            const std::size_t right = left + 2;
            const float dx =
                before[right] + 2 * row[right] + after[right] - before[left] - 2 * row[left] - after[left];
            const float dy = before[left] + 2 * before[here] + before[right] - after[left] - 2 * after[here] -
                             after[right];
            const host::Point3 normal = host::Normalize({-dx, dy, 1});
            std::uint8_t* target = normals.Pixel(x, heights.height - 1 - y);
            target[kBlue] = NormalByte(normal.z);
            target[kGreen] = NormalByte(normal.y);
            target[kRed] = 0;
            target[kAlpha] = NormalByte(normal.x);
        }
        before = std::move(row);
        row = after;
    }
    return normals;
}
