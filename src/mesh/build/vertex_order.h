#pragma once

#include "geometry/export_vertex.h"

// The order of the weld. Two vertices are one exactly when neither is less: they agree in position, map
// coordinates, normal and tangent up to 0.001 per component (of a position: a millimetre), and in all else
// exactly. Channels that the vertices' format lacks are not compared; vertices of one subset share a format.
//
// The tolerance makes the order only approximately transitive: of a row of vertices each within the tolerance
// of the next, the ends may differ.
inline constexpr float kWeldTolerance = 0.001F;

// All of these are below 0 if `a` comes first, above 0 if `b` does, and 0 where the two agree.

inline int CompareWithin(float a, float b) {
    const float ahead = b - a;
    return (ahead < -kWeldTolerance) - (ahead > kWeldTolerance);
}

inline int ComparePoints(const host::Point3& a, const host::Point3& b) {
    const int x = CompareWithin(a.x, b.x);
    const int y = x != 0 ? x : CompareWithin(a.y, b.y);
    return y != 0 ? y : CompareWithin(a.z, b.z);
}

// What is left to compare of two vertices whose positions agree.
int CompareBehindPosition(const eExportVertex& a, const eExportVertex& b);

inline int CompareVertices(const eExportVertex& a, const eExportVertex& b) {
    const int position = ComparePoints(a.position, b.position);
    return position != 0 ? position : CompareBehindPosition(a, b);
}

inline bool VertexLess(const eExportVertex& a, const eExportVertex& b) {
    return CompareVertices(a, b) < 0;
}
