#pragma once

#include "host/object.h"
#include "standalone/objects/element.h"

namespace standalone {

// An object that has nothing but its class: helpers, targets, and what the document gives by class alone.
class ePlainObject : public eElement<host::Object> {
public:
    ePlainObject(eHold& hold, std::size_t place, std::uint32_t superClassId, const host::ClassId& id)
        : eElement(hold, place), superClass(superClassId), classId(id) {}

    std::uint32_t SuperClassID() const override { return superClass; }
    host::ClassId ClassID() const override { return classId; }

private:
    std::uint32_t superClass;
    host::ClassId classId;
};

}  // namespace standalone
