// Plain solids for what has no mesh of its own: volumes, zones, points and cameras.
#pragma once

#include <cstdint>
#include <vector>

#include "host/values.h"

namespace gltf {

// Metres. Triangles turn counter-clockwise seen from outside, in a right-handed space.
struct eSolid {
    std::vector<host::Point3> vertices;
    std::vector<std::uint16_t> indices;
};

// Around the origin.
eSolid MakeBox(const host::Point3& size);
eSolid MakeSphere(float radius);
// Along z.
eSolid MakeCylinder(float radius, float height);
// A wall that stands on a closed line; z is up.
eSolid MakeWall(const std::vector<host::Point2>& line, float height);
std::vector<host::Point2> CircleLine(const host::Point2& center, float radius);

}  // namespace gltf
