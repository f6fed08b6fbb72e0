#include "mesh/build/texture_size_estimate.h"

#include <algorithm>
#include <cmath>

namespace {

float Ratio(float length, float difference) {
    constexpr float kSmallestDifference = 0.01F;
    constexpr float kLargestRatio = 256;
    const float distance = std::fabs(difference);
    return distance < kSmallestDifference ? 0 : std::min(length / distance, kLargestRatio);
}

void Blend(float& size, float ratio) {
    if (ratio > 1) {
        size = (size + ratio) * 0.5F;
    }
}

}  // namespace

void EstimateTextureSize(eExportMaterialUse& use, const eCorners<host::Point3>& positions,
                         const eCorners<host::Point3>& mapCoords) {
    float largestU = 0, largestV = 0;
    for (std::size_t from = 0; from < 3; ++from) {
        const std::size_t to = (from + 1) % 3;
        const float length = host::Length(positions[to] - positions[from]);
        largestU = std::max(largestU, Ratio(length, mapCoords[to].x - mapCoords[from].x));
        largestV = std::max(largestV, Ratio(length, mapCoords[to].y - mapCoords[from].y));
    }
    Blend(use.sizeU, largestU);
    Blend(use.sizeV, largestV);
}
