#include "verify/node_skin.h"

#include "scene/properties/node_properties.h"

namespace verify {

namespace {

void Switch(host::Modifier& modifier, bool on) {
    constexpr std::uint32_t kAllParts = 0x80003FFF;
    constexpr std::uint32_t kChanged = 0x50;
    constexpr auto kAnyClass = static_cast<std::uint32_t>(-16);
    const std::uint32_t others = modifier.AnimatableFlags() & ~host::Modifier::kDisabledFlag;
    modifier.SetAnimatableFlags(on ? others : others | host::Modifier::kDisabledFlag);
    modifier.NotifyDependents(host::kForever, kAllParts, kChanged, kAnyClass, true);
}

}  // namespace

host::Modifier* FindSkinModifier(const host::INode& node) {
    const auto* stack = dynamic_cast<const host::IDerivedObject*>(node.GetObjectRef());
    if (host::HasUserPropString(node, "NoSkin")) {
        return nullptr;
    }
    for (; stack != nullptr; stack = dynamic_cast<const host::IDerivedObject*>(stack->GetObjRef())) {
        for (int i = stack->NumModifiers() - 1; i >= 0; --i) {
            if (stack->GetModifier(i)->ClassID() == host::kSkinClass) {
                return stack->GetModifier(i);
            }
        }
    }
    return nullptr;
}

eRestPose::eRestPose(const host::INode& node)
    : skin_(HasUserProp(node, "OldSkin") ? nullptr : FindSkinModifier(node)) {
    if (skin_ != nullptr) {
        Switch(*skin_, false);
    }
}

eRestPose::~eRestPose() {
    if (skin_ != nullptr) {
        Switch(*skin_, true);
    }
}

}  // namespace verify
