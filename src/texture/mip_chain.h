// The levels of a texture, each half of the one before.
//
// The filter is a plain average: every pixel of the level above counts once, with the same weight (at an odd
// side each pixel of the smaller level covers a little more than two of the larger one and takes the parts
// that it covers). For normal maps that is what shading wants: the average of normals lit by a light is the
// averaged normal lit by it, so X, Y and Z are averaged as they stand, and the shortening of the mean over
// rough ground is kept: the engine can make the normal unit length, but could not win that back. A sharper
// filter would swing beyond the range of its source at the edges of bricks and panels and bend the normals
// there. Levels are made from levels in float precision, so the smallest one is rounded once and not ten
// times.
#pragma once

#include <cstddef>
#include <vector>

#include "texture/lanes.h"
#include "texture/pixel_image.h"

// The number of levels down to 1 by 1: 9 for 256 by 64. Sides are at least 1.
unsigned FullLevelCount(unsigned width, unsigned height);

// A level between two roundings: R, G, B, A from 0 to 255 in the lanes.
struct eFloatImage {
    unsigned width = 0;
    unsigned height = 0;
    std::vector<eFloatLanes> pixels;

    unsigned Width() const { return width; }
    unsigned Height() const { return height; }
};

// The next level: each side half, rounded down, at least 1. Cost: 1 to 3 ns a pixel of the source.
eFloatImage HalvedImage(const eImageSource& image);
eFloatImage HalvedImage(const eFloatImage& image);

// Rounds each channel to the nearest byte, into a strip of count rows whose memory is used again.
void RoundRows(const eFloatImage& image, std::size_t firstRow, unsigned count, ePixelImage& strip);
