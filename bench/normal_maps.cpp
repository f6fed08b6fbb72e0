#include "normal_maps.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <random>

namespace {

std::uint8_t UnitByte(float component) {
    return static_cast<std::uint8_t>((component + 1.0F) * 0.5F * 255.0F);
}

// As a height map of bytes holds it.
float InByteSteps(float height) {
    return std::floor(std::clamp(height, 0.0F, 1.0F) * 255.0F + 0.5F) / 255.0F;
}

template <class Height>
std::vector<float> HeightsOf(unsigned side, Height height) {
    std::vector<float> heights;
    heights.reserve(std::size_t{side} * side);
    for (unsigned y = 0; y < side; y++) {
        for (unsigned x = 0; x < side; x++) {
            heights.push_back(InByteSteps(height(x, y)));
        }
    }
    return heights;
}

float Waves(unsigned x, unsigned y) {
    const auto u = static_cast<float>(x);
    const auto v = static_cast<float>(y);
    return 0.5F + 0.25F * std::sin(u * 0.11F) * std::sin(v * 0.13F) + 0.15F * std::sin(u * 0.31F + v * 0.21F);
}

float Smooth(float part) {
    return part * part * (3.0F - 2.0F * part);
}

// Random heights on a grid of cellSide pixels, smoothly joined.
class eNoiseOctave {
public:
    eNoiseOctave(unsigned side, unsigned cell, std::mt19937& random) : cellSide(cell), cells(side / cell) {
        for (unsigned i = 0; i < cells * cells; i++) {
            corners.push_back(static_cast<float>(random() & 0xffff) / 65535.0F);
        }
    }

    float At(unsigned x, unsigned y) const {
        const float right = Smooth(static_cast<float>(x % cellSide) / static_cast<float>(cellSide));
        const float down = Smooth(static_cast<float>(y % cellSide) / static_cast<float>(cellSide));
        const unsigned column = x / cellSide;
        const unsigned row = y / cellSide;
        const float upper = std::lerp(Corner(column, row), Corner(column + 1, row), right);
        const float lower = std::lerp(Corner(column, row + 1), Corner(column + 1, row + 1), right);
        return std::lerp(upper, lower, down);
    }

private:
    float Corner(unsigned column, unsigned row) const {
        return corners[std::size_t{row % cells} * cells + column % cells];
    }

    unsigned cellSide;
    unsigned cells;
    std::vector<float> corners;
};

std::vector<float> NoiseHeights(unsigned side) {
    std::mt19937 random(1);
    std::vector<eNoiseOctave> octaves;
    for (unsigned cell = 4; cell <= 64; cell *= 2) {
        octaves.emplace_back(side, cell, random);
    }
    return HeightsOf(side, [&](unsigned x, unsigned y) {
        float height = 0;
        float share = 1.0F / 16.0F;
        for (const eNoiseOctave& octave : octaves) {
            height += share * octave.At(x, y);
            share *= 1.6F;
        }
        return height;
    });
}

std::vector<float> BrickHeights(unsigned side) {
    std::mt19937 random(2);
    return HeightsOf(side, [&](unsigned x, unsigned y) {
        const unsigned across = (x + (y / 32 % 2) * 32) % 64;
        const unsigned down = y % 32;
        const unsigned toJoint = std::min(std::min(across, 63 - across), std::min(down, 31 - down));
        const float grain = static_cast<float>(random() & 0xff) / 255.0F;
        return 0.6F * std::min(1.0F, static_cast<float>(toJoint) / 5.0F) + 0.05F * grain;
    });
}

}  // namespace

ePixelImage NormalsOfHeights(const std::vector<float>& heights, unsigned width, unsigned height) {
    ePixelImage image;
    image.width = width;
    image.height = height;
    image.rgba.reserve(4 * heights.size());
    const auto at = [&](unsigned x, unsigned y) {
        return heights[std::size_t{y % height} * width + x % width];
    };
    for (unsigned y = 0; y < height; y++) {
        const unsigned above = y + height - 1;
        for (unsigned x = 0; x < width; x++) {
            const unsigned left = x + width - 1;
            const float dx = at(x + 1, above) + 2 * at(x + 1, y) + at(x + 1, y + 1) - at(left, above) -
                             2 * at(left, y) - at(left, y + 1);
            const float dy = at(left, above) + 2 * at(x, above) + at(x + 1, above) - at(left, y + 1) -
                             2 * at(x, y + 1) - at(x + 1, y + 1);
            const float shrink = 1.0F / std::sqrt(dx * dx + dy * dy + 1.0F);
            const std::array<std::uint8_t, 4> pixel = {0, UnitByte(dy * shrink), UnitByte(shrink),
                                                       UnitByte(-dx * shrink)};
            image.rgba.insert(image.rgba.end(), pixel.begin(), pixel.end());
        }
    }
    return image;
}

std::vector<eNormalMap> MakeNormalMaps(unsigned side) {
    return {{"waves", NormalsOfHeights(HeightsOf(side, Waves), side, side)},
            {"noise", NormalsOfHeights(NoiseHeights(side), side, side)},
            {"bricks", NormalsOfHeights(BrickHeights(side), side, side)}};
}
