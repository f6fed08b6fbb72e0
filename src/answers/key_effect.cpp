#include "answers/key_effect.h"

#include <string>

#include "base/ansi.h"
#include "scene/properties/node_properties.h"

namespace answers {
namespace {

enum class eJoint { None, Range, Socket, Unknown };

// Bits of the node's flags: the host's own marks of a joint and of a bone that ends an IK chain.
constexpr std::uint32_t kJointFlags = (1U << 7) | (1U << 6);
constexpr std::uint32_t kTerminatorFlag = 1U << 5;

// A type that is none is told by the run.
eJoint JointOf(const host::INode& node) {
    std::string type;
    if (!node.GetUserPropString("IKType", type)) {
        return (node.AnimatableFlags() & kJointFlags) != 0 ? eJoint::Range : eJoint::None;
    }
    type = LowerAscii(type);
    if (type == "socket") {
        return eJoint::Socket;
    }
    return type == "revolute" || type == "prizmatic" ? eJoint::Range : eJoint::Unknown;
}

bool EndsChain(const host::INode& node) {
    return HasUserProp(node, "IKTerminate") || (node.AnimatableFlags() & kTerminatorFlag) != 0;
}

bool StandsBelowStructure(const host::INode& node) {
    const host::INode* above = node.GetParentNode();
    while (above != nullptr && !HasUserProp(*above, "Structure")) {
        above = above->GetParentNode();
    }
    return above != nullptr;
}

bool IsModelRoot(const host::INode& node) {
    const host::INode* const parent = node.GetParentNode();
    return (parent != nullptr && parent->GetParentNode() == nullptr) ||
           (HasUserProp(node, "Model") && StandsBelowStructure(node));
}

std::optional<ePhrase> Unless(bool hasEffect, ePhrase otherwise) {
    return hasEffect ? std::nullopt : std::optional(otherwise);
}

// The end of a chain opens the limits of a bone without joint too.
std::optional<ePhrase> WithoutJoint(const eNodeLint& lint, eKeyPlace place) {
    const eJoint joint = JointOf(lint.node);
    if (lint.kind != eNodeKind::Ordinary) {
        return ePhrase::CountsOnBones;
    }
    if (joint == eJoint::Unknown) {
        return std::nullopt;
    }
    if (place == eKeyPlace::Sockets) {
        return Unless(joint == eJoint::Socket, ePhrase::CountsOnSockets);
    }
    if (place == eKeyPlace::Ranges && joint == eJoint::Socket) {
        return ePhrase::CountsOnRanges;
    }
    return Unless(joint != eJoint::None || EndsChain(lint.node), ePhrase::CountsOnJoints);
}

}  // namespace

std::optional<ePhrase> WithoutEffect(const eNodeLint& lint, const eKnownKey& key) {
    const bool isVolume = lint.kind == eNodeKind::Volume;
    const bool isZone = lint.kind == eNodeKind::Zone ||
                        (isVolume && HasUserProp(lint.node, "Obstacle") && key.name != "Area");
    switch (key.place) {
        case eKeyPlace::Anywhere:
            return std::nullopt;
        case eKeyPlace::Models:
            return Unless(IsModelRoot(lint.node), ePhrase::CountsOnModels);
        case eKeyPlace::Bones:
            return Unless(lint.kind == eNodeKind::Ordinary, ePhrase::CountsOnBones);
        case eKeyPlace::Joints:
        case eKeyPlace::Ranges:
        case eKeyPlace::Sockets:
            return WithoutJoint(lint, key.place);
        case eKeyPlace::Volumes:
            return Unless(isVolume, ePhrase::CountsOnVolumes);
        case eKeyPlace::Zones:
            return Unless(isZone, ePhrase::CountsOnZones);
        case eKeyPlace::VolumesAndZones:
            return Unless(isVolume || isZone, ePhrase::CountsOnVolumesAndZones);
        case eKeyPlace::SupportPoints:
            return Unless(lint.kind == eNodeKind::SupportPoint, ePhrase::KindIsDecided);
        case eKeyPlace::Bodies:
            return Unless(lint.kind == eNodeKind::Body, ePhrase::KindIsDecided);
        case eKeyPlace::Previews:
            break;
    }
    return Unless(lint.kind == eNodeKind::Preview, ePhrase::KindIsDecided);
}

}  // namespace answers
