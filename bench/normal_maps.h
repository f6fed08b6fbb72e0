// Normal maps made by code, in the layout that the textures have: R = 0, G = Y, B = Z, A = X.
#pragma once

#include <string>
#include <vector>

#include "texture/pixel_image.h"

struct eNormalMap {
    std::string name;
    ePixelImage image;
};

// From heights of 0 to 1, row after row, that repeat at the image's edges.
ePixelImage NormalsOfHeights(const std::vector<float>& heights, unsigned width, unsigned height);

// Smooth waves, ground of five octaves of noise, and rough bricks: side is a power of two from 64 on.
std::vector<eNormalMap> MakeNormalMaps(unsigned side);
