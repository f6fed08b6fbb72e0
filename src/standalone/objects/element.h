#pragma once

#include <cstdint>

#include "host/scene_element.h"
#include "standalone/objects/hold.h"

namespace standalone {

// What every element of the scene has beside its kind: a flag word whose changes the hold takes back, and its
// place in the document. `Base` is the host's class of the element.
template <class Base>
class eElement : public Base {
public:
    // `place` counts from 0 within the elements of one kind. The hold must outlive the element.
    eElement(eHold& hold, std::size_t place, std::uint32_t initialFlags = 0)
        : elementHold(hold), order(place + 1), elementFlags(initialFlags) {}
    eElement(const eElement&) = delete;
    eElement& operator=(const eElement&) = delete;

    std::uint32_t AnimatableFlags() const override { return elementFlags; }
    void SetAnimatableFlags(std::uint32_t value) override {
        if (value != elementFlags) {
            elementHold.Record([this, before = elementFlags] { elementFlags = before; });
            elementFlags = value;
        }
    }
    std::uintptr_t IdentityOrder() const override { return order; }

private:
    eHold& elementHold;
    std::uintptr_t order;
    std::uint32_t elementFlags;
};

}  // namespace standalone
