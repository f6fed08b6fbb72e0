#pragma once

#include <cstdint>
#include <cstring>
#include <functional>
#include <span>
#include <vector>

// Pixels of four bytes in the order blue, green, red, alpha, row after row without gaps. Row 0 holds the
// smallest v, unless a user says otherwise.
struct eTextureImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    eTextureImage() = default;
    eTextureImage(int width_, int height_)
        : width(width_),
          height(height_),
          pixels(4 * static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)) {}

    std::uint8_t* Pixel(int x, int y) {
        return pixels.data() + 4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                                    static_cast<std::size_t>(x));
    }
    const std::uint8_t* Pixel(int x, int y) const {
        return pixels.data() + 4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                                    static_cast<std::size_t>(x));
    }
};

// A picture whose rows are made when they are asked for, so that nobody need hold it whole.
struct eTextureRows {
    int width = 0;
    int height = 0;
    // Fills in the pixels of row y. In any order, also more than once.
    std::function<void(int y, std::span<std::uint8_t> pixels)> fill;

    eTextureRows(int width_, int height_, std::function<void(int, std::span<std::uint8_t>)> fill_)
        : width(width_), height(height_), fill(std::move(fill_)) {}
    // Those of an image, which outlives them.
    eTextureRows(const eTextureImage& image)
        : eTextureRows(image.width, image.height, [&image](int y, std::span<std::uint8_t> pixels) {
              std::memcpy(pixels.data(), image.Pixel(0, y), pixels.size());
          }) {}

    std::size_t RowBytes() const { return 4 * static_cast<std::size_t>(width); }
};
