#pragma once

#include "host/object.h"
#include "standalone/objects/element.h"
#include "standalone/scene_data.h"

namespace standalone {

// A rectangle, a circle or a line.
class eShapeObject : public eElement<host::Object> {
public:
    // `kind` holds one of the three and must outlive the object.
    eShapeObject(eHold& hold, std::size_t place, const eObjectKind& shapeKind)
        : eElement(hold, place), kind(shapeKind) {}

    std::uint32_t SuperClassID() const override { return host::kShapeSuperClass; }
    host::ClassId ClassID() const override;
    host::Box3 GetDeformBBox(host::TimeValue t) const override;
    // Lines are straight and a circle has 32 points, whatever the steps.
    host::PolyShape MakePolyShape(host::TimeValue t, int steps, bool optimize) const override;

private:
    const eObjectKind& kind;
};

}  // namespace standalone
