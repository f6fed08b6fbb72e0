#pragma once

#include "host/mesh.h"
#include "standalone/scene_data.h"

// The meshes of the primitives, in object space; map channel 1 runs from 0 to 1.
namespace standalone {

// Each side has its own smoothing group, material id and whole map square. In this order: bottom, top, -y,
// +x, +y, -x.
host::Mesh BoxMesh(const eBoxObject& box);

// Rings of points from pole to pole; u runs round, v up. The bounds are exactly ±radius.
host::Mesh SphereMesh(const eSphereObject& sphere);

// The mantle is smoothing group 1, base and top are 2 and 4; the caps are fans about their middle.
host::Mesh CylinderMesh(const eCylinderObject& cylinder);

// Point `index` of `count` on the unit circle, counted from the x axis towards the y axis; exact on the axes.
host::Point2 CirclePoint(int index, int count);

}  // namespace standalone
