#include "standalone/loaders/shared/placed_shape.h"

#include <algorithm>

namespace standalone {
namespace {

// The factor that brings a width to the largest one; a polygon of ten sides is 5% narrower than its circle.
float Roundness(float width, float largest) {
    constexpr float kRound = 0.95F;
    return largest <= 0 || width >= kRound * largest ? 1 : width / largest;
}

}  // namespace

ePlacedShape PlacedShapeOf(const host::Box3& bounds, eShapeWord shape) {
    const host::Point3 size = bounds.IsEmpty() ? host::Point3{} : bounds.Width();
    const host::Point3 middle = bounds.IsEmpty() ? host::Point3{} : (bounds.pmin + bounds.pmax) * 0.5F;
    const host::Point3 base{middle.x, middle.y, bounds.IsEmpty() ? 0 : bounds.pmin.z};
    ePlacedShape placed;
    placed.offset.position = shape == eShapeWord::Sphere ? middle : base;
    if (shape == eShapeWord::Box) {
        placed.kind = eBoxObject{size.x, size.y, size.z};
    } else if (shape == eShapeWord::Sphere) {
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
