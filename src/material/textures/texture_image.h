#pragma once

#include <cstdint>
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
