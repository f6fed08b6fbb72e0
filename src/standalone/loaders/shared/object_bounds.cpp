#include "standalone/loaders/shared/object_bounds.h"

#include "standalone/data/overloaded.h"

namespace standalone {

host::Box3 BoundsOfPoints(const eObjectKind& kind) {
    const auto box = [](float x, float y, float low, float high) {
        host::Box3 bounds;
        bounds += host::Point3{-x, -y, low};
        bounds += host::Point3{x, y, high};
        return bounds;
    };
    const auto splines = [](const eLineObject& line) {
        host::Box3 bounds;
        for (const eSpline& spline : line.splines) {
            for (const host::Point3& point : spline.points) {
                bounds += point;
            }
        }
        return bounds;
    };
    return std::visit(
        eOverloaded{
            [&](const eMeshObject& mesh) { return host::BoundsOf(mesh.mesh); },
            [&](const eBoxObject& b) { return box(b.width / 2, b.length / 2, 0, b.height); },
            [&](const eSphereObject& s) { return box(s.radius, s.radius, -s.radius, s.radius); },
            [&](const eCylinderObject& c) { return box(c.radius, c.radius, 0, c.height); },
            [&](const eLineObject& line) { return splines(line); },
            [](const auto&) { return host::Box3{}; },
        },
        kind);
}

}  // namespace standalone
