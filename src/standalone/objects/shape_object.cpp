#include "standalone/objects/shape_object.h"

#include "standalone/data/overloaded.h"
#include "standalone/objects/tessellation.h"

namespace standalone {

namespace {

constexpr int kCirclePoints = 32;

host::PolyShape Lines(const eRectangleObject& rectangle) {
    const float x = rectangle.width / 2, y = rectangle.length / 2;
    return {{{{{-x, -y, 0}, {x, -y, 0}, {x, y, 0}, {-x, y, 0}}, true}}};
}

host::PolyShape Lines(const eCircleObject& circle) {
    host::PolyLine line{{}, true};
    for (int i = 0; i < kCirclePoints; ++i) {
        const host::Point2 direction = CirclePoint(i, kCirclePoints);
        line.points.push_back({direction.x * circle.radius, direction.y * circle.radius, 0});
    }
    return {{line}};
}

host::PolyShape Lines(const eLineObject& object) {
    host::PolyShape shape;
    for (const eSpline& spline : object.splines) {
        shape.lines.push_back({spline.points, spline.closed});
    }
    return shape;
}

host::PolyShape Lines(const auto&) {
    return {};
}

}  // namespace

host::ClassId eShapeObject::ClassID() const {
    return std::visit(eOverloaded{[](const eRectangleObject&) {
                                      return host::ClassId{0x1065, 0};
                                  },
                                  [](const eCircleObject&) {
                                      return host::ClassId{0x1999, 0};
                                  },
                                  [](const auto&) {
                                      return host::ClassId{0xA, 0};
                                  }},
                      kind);
}

host::PolyShape eShapeObject::MakePolyShape(host::TimeValue, int, bool) const {
    return std::visit([](const auto& shape) { return Lines(shape); }, kind);
}

host::Box3 eShapeObject::GetDeformBBox(host::TimeValue t) const {
    host::Box3 box;
    for (const host::PolyLine& line : MakePolyShape(t, 0, false).lines) {
        for (const host::Point3& point : line.points) {
            box += point;
        }
    }
    return box.IsEmpty() ? Object::GetDeformBBox(t) : box;
}

}  // namespace standalone
