#include "mesh/read/skin_switch.h"

namespace {

// The host's notification that what an element gives has changed altogether.
void NotifyChange(host::Modifier& modifier) {
    constexpr std::uint32_t kAllParts = 0x80003FFFU;
    constexpr std::uint32_t kChange = 0x50;
    constexpr auto kWholePipeline = static_cast<std::uint32_t>(-16);
    modifier.NotifyDependents(host::kForever, kAllParts, kChange, kWholePipeline, true);
}

}  // namespace

eSkinSwitch::eSkinSwitch(host::Modifier* modifier) : modifier_(modifier) {
    if (modifier_ != nullptr) {
        modifier_->SetAnimatableFlags(modifier_->AnimatableFlags() | host::Modifier::kDisabledFlag);
        NotifyChange(*modifier_);
    }
}

eSkinSwitch::~eSkinSwitch() {
    if (modifier_ != nullptr) {
        modifier_->SetAnimatableFlags(modifier_->AnimatableFlags() & ~host::Modifier::kDisabledFlag);
        NotifyChange(*modifier_);
    }
}
