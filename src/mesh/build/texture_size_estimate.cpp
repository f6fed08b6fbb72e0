#include "mesh/build/texture_size_estimate.h"

#include <algorithm>
#include <cmath>

namespace {

bool IsTooSmall(float distance) {
    constexpr float kSmallestDifference = 0.01F;
    return distance < kSmallestDifference;
}

float Ratio(float length, float distance) {
    constexpr float kLargestRatio = 256;
    return IsTooSmall(distance) ? 0 : std::min(length / distance, kLargestRatio);
}

void Blend(float& size, float ratio) {
    if (ratio > 1) {
        size = (size + ratio) * 0.5F;
    }
}

}  // namespace

void EstimateTextureSize(eExportMaterialUse& use, const eCorners<host::Point3>& positions,
                         const eCorners<host::Point2>& mapCoords) {
    float largestU = 0, largestV = 0;
    for (std::size_t from = 0; from < 3; ++from) {
        const std::size_t to = (from + 1) % 3;
        const float u = std::fabs(mapCoords[to].x - mapCoords[from].x);
        const float v = std::fabs(mapCoords[to].y - mapCoords[from].y);
        if (IsTooSmall(u) && IsTooSmall(v)) {
            continue;
        }
        const float length = host::Length(positions[to] - positions[from]);
        largestU = std::max(largestU, Ratio(length, u));
        largestV = std::max(largestV, Ratio(length, v));
    }
    Blend(use.sizeU, largestU);
    Blend(use.sizeV, largestV);
}
