#include "scene/skeleton/bone_header.h"

#include <algorithm>
#include <string>

#include "base/ansi.h"
#include "run/export.h"
#include "run/model_texts.h"
#include "run/tell.h"
#include "scene/current_model.h"
#include "scene/properties/node_properties.h"
#include "scene/properties/told_values.h"
#include "scene/skeleton/bone_step.h"

namespace {

struct eJoint {
    eIkType type;
    const char* word;
};

constexpr eJoint kJoints[] = {{kIkRevolute, "revolute"}, {kIkPrizmatic, "prizmatic"}, {kIkSocket, "socket"}};

// The host's own marks of a node that turns or slides.
constexpr std::uint32_t kTurnsFlag = 1U << 7;
constexpr std::uint32_t kSlidesFlag = 1U << 6;

eIkType NamedJoint(Export& run, const host::INode& node, const std::string& name) {
    const auto* joint = std::ranges::find(kJoints, name, &eJoint::word);
    if (joint != std::end(kJoints)) {
        return joint->type;
    }
    Tell(run, eMessageId::JointsUnknownType, {.node = host::PathOf(node), .property = "IKType"}, name,
         node.GetName());
    return kIkNone;
}

eIkType JointOfFlags(const host::INode& node) {
    const std::uint32_t flags = node.AnimatableFlags();
    if ((flags & kTurnsFlag) != 0) {
        return kIkRevolute;
    }
    return (flags & kSlidesFlag) != 0 ? kIkPrizmatic : kIkNone;
}

eIkType JointOf(Export& run, const host::INode& node) {
    std::string name;
    if (node.GetUserPropString("IKType", name)) {
        return NamedJoint(run, node, LowerAscii(name));
    }
    return run.options.exportIK != 0 ? JointOfFlags(node) : kIkNone;
}

void WriteParameters(Export& run, const host::INode& node) {
    std::string text = NormalizeUserProps(node, true);
    if (!text.empty()) {
        std::ranges::replace(text, ',', '.');
        run.texts->mdlWriter->BlockBegin().Word("parameters").String(text).BlockEndLine();
    }
}

void WriteColor(Export& run, const host::INode& node) {
    std::string value;
    if (!node.GetUserPropString("Color", value) || !CheckWord(run, node, "Color", value)) {
        return;
    }
    run.texts->mdlWriter->BlockBegin().Word("color");
    if (!value.empty()) {
        run.texts->mdlWriter->Word(value);
    }
    run.texts->mdlWriter->BlockEndLine();
}

}  // namespace

void WriteBoneHeader(Export& run, const eBoneStep& step) {
    const eIkType joint = JointOf(run, step.node);
    run.model->bones[static_cast<std::size_t>(step.index)].ikType = joint;

    run.texts->mdlWriter->BlockBegin().Word("bone");
    if (joint != kIkNone) {
        run.texts->mdlWriter->Word(std::ranges::find(kJoints, joint, &eJoint::type)->word);
    }
    run.texts->mdlWriter->String(step.name).EndLine();
    WriteParameters(run, step.node);
    WriteColor(run, step.node);
}
