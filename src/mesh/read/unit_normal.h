#pragma once

#include <cmath>

#include "host/values.h"

// True for what a renderer can light with; false also for what is no number.
inline bool HasUnitLength(const host::Point3& normal) {
    constexpr float kTolerance = 1e-3F;
    return std::fabs(host::DotProd(normal, normal) - 1) < kTolerance;
}

// The direction of the normal with unit length, also where its own length is beyond the range of numbers. A
// normal without direction gives `otherwise`: the normals of faces back to back cancel out, a face without
// area has none.
inline host::Point3 UnitNormal(const host::Point3& normal, const host::Point3& otherwise) {
    const host::Point3 unit = host::Normalize(normal);
    if (HasUnitLength(unit)) {
        return unit;
    }
    const float size = std::fmax(std::fabs(normal.x), std::fmax(std::fabs(normal.y), std::fabs(normal.z)));
    const host::Point3 scaled = host::Normalize({normal.x / size, normal.y / size, normal.z / size});
    return HasUnitLength(scaled) ? scaled : otherwise;
}
