#include "standalone/loaders/gltf/shapes/gltf_shape.h"

#include <algorithm>

#include "standalone/loaders/gltf/shapes/gltf_lines.h"
#include "standalone/loaders/gltf/shapes/gltf_mesh.h"

namespace standalone {
namespace {

host::Box3 BoundsOfMesh(eGltfImport& import, int mesh) {
    const eGltfVertices vertices(import, mesh);
    host::Box3 bounds;
    if (import.report.HasProblems()) {
        return bounds;
    }
    for (const host::Point3& point : MakeGltfMesh(import.report, import.accessors, vertices).verts) {
        bounds += point;
    }
    for (const eSpline& spline : ReadGltfLines(import, mesh)) {
        for (const host::Point3& point : spline.points) {
            bounds += point;
        }
    }
    return bounds;
}

// The factor that brings a width to the largest one; a polygon of ten sides is 5% narrower than its circle.
float Roundness(float width, float largest) {
    constexpr float kRound = 0.95F;
    return largest <= 0 || width >= kRound * largest ? 1 : width / largest;
}

}  // namespace

eGltfPlacedShape MakeGltfShape(eGltfImport& import, int mesh, eGltfShape shape) {
    const host::Box3 bounds = BoundsOfMesh(import, mesh);
    const host::Point3 size = bounds.IsEmpty() ? host::Point3{} : bounds.Width();
    const host::Point3 middle = bounds.IsEmpty() ? host::Point3{} : (bounds.pmin + bounds.pmax) * 0.5F;
    const host::Point3 base{middle.x, middle.y, bounds.IsEmpty() ? 0 : bounds.pmin.z};
    eGltfPlacedShape placed;
    placed.offset.position = shape == eGltfShape::Sphere ? middle : base;
    if (shape == eGltfShape::Box) {
        placed.kind = eBoxObject{size.x, size.y, size.z};
    } else if (shape == eGltfShape::Sphere) {
        const float largest = std::max({size.x, size.y, size.z});
        placed.kind = eSphereObject{.radius = largest / 2};
        placed.offset.scale = {Roundness(size.x, largest), Roundness(size.y, largest),
                               Roundness(size.z, largest)};
    } else {
        const float largest = std::max(size.x, size.y);
        placed.kind = eCylinderObject{.radius = largest / 2, .height = size.z};
        placed.offset.scale = {Roundness(size.x, largest), Roundness(size.y, largest), 1};
    }
    return placed;
}

}  // namespace standalone
