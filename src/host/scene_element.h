#pragma once

#include <cstdint>

#include "host/values.h"

namespace host {

// What every element of a scene can be asked: its class, its flags, and the elements that it refers to.
class ReferenceTarget {
public:
    virtual ~ReferenceTarget() = default;

    virtual std::uint32_t SuperClassID() const = 0;
    virtual ClassId ClassID() const = 0;

    // The flag word of the element; bit numbers have their meaning where they are used.
    virtual std::uint32_t AnimatableFlags() const { return 0; }
    virtual void SetAnimatableFlags(std::uint32_t) {}

    // The reference graph: entries may be null and may be reached on several ways.
    virtual int NumRefs() const { return 0; }
    virtual ReferenceTarget* GetReference(int) const { return nullptr; }

    // Opens and closes the evaluation in render mode.
    virtual void RenderBegin(TimeValue, std::uint32_t /*flags*/) {}
    virtual void RenderEnd(TimeValue) {}

    // Tells everything that hangs on this element that it has changed.
    virtual void NotifyDependents(const Interval&, std::uint32_t /*partMask*/, std::uint32_t /*message*/,
                                  std::uint32_t /*superClass*/, bool /*propagate*/) {}

    // Where the element stands in orders that hang on the identity of host elements: the pointer itself for a
    // host that has no better order, the place in the document for the stand-alone host, so that the same
    // scene gives the same files.
    virtual std::uintptr_t IdentityOrder() const { return reinterpret_cast<std::uintptr_t>(this); }
};

// Orders two elements by IdentityOrder; null comes first.
struct IdentityLess {
    bool operator()(const ReferenceTarget* a, const ReferenceTarget* b) const {
        return (a != nullptr ? a->IdentityOrder() : 0) < (b != nullptr ? b->IdentityOrder() : 0);
    }
};

// The work flag by which a walk over the reference graph visits each element once.
inline constexpr std::uint32_t kWorkFlag = 0x80000000U;

inline constexpr std::uint32_t kGeometrySuperClass = 0x10;
inline constexpr std::uint32_t kCameraSuperClass = 0x20;
inline constexpr std::uint32_t kLightSuperClass = 0x30;
inline constexpr std::uint32_t kShapeSuperClass = 0x40;
inline constexpr std::uint32_t kHelperSuperClass = 0x50;
inline constexpr std::uint32_t kDerivedObjectSuperClass = 0x2;
inline constexpr std::uint32_t kSceneExportSuperClass = 0xA20;
inline constexpr std::uint32_t kMaterialSuperClass = 0xC00;
inline constexpr std::uint32_t kTexmapSuperClass = 0xC10;
inline constexpr std::uint32_t kModifierSuperClass = 0x810;
inline constexpr std::uint32_t kNodeSuperClass = 0x1;

inline constexpr ClassId kTriObjectClass{9, 0};
inline constexpr ClassId kTargetClass{0x1020, 0};
inline constexpr ClassId kSkinClass{0x95C723, 0x15666};

}  // namespace host
