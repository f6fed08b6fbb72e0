#pragma once

#include "material/textures/texture_image.h"

// Both operations give the engine's normal map: red 0, green the normal's y, blue its z, alpha its x. The
// picture comes with row 0 at the bottom and leaves with row 0 at the top.

// From a picture of normals: red x, green y upward, blue z.
eTextureImage NormalsFromPicture(const eTextureRows& picture);

// From heights in the red channel, by the Sobel operator (Sobel and Feldman, 1968); neighbours beyond an edge
// come from the opposite edge.
eTextureImage NormalsFromHeights(const eTextureRows& heights);
