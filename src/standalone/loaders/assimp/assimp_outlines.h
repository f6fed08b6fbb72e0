#pragma once

#include <assimp/scene.h>

namespace standalone {

// Outlines without a face come out of some exporters as one polygon of all their segments: corner 1 and 2, 2
// and 3, 3 and 4. They become the segments again. Before polygons are cut into triangles.
void MendOutlines(aiScene& scene);

}  // namespace standalone
