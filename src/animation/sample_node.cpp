#include "animation/sample_node.h"

#include <cstdint>
#include <optional>
#include <span>

#include "animation/animation_table.h"
#include "animation/model_motion.h"
#include "animation/pose_tolerance.h"
#include "base/format.h"
#include "run/export.h"
#include "run/model_texts.h"
#include "run/tell.h"
#include "scene/bones/bone_tree.h"
#include "scene/master_scale.h"
#include "scene/run_journal.h"
#include "scene/skeleton/matrix_text.h"

namespace {

using host::Matrix3;
using host::Point3;
using host::Quat;

constexpr float kHandednessTolerance = 0.001F;

// What does not change from sample to sample.
struct eSampler {
    Export& run;
    host::INode& node;
    host::INode& parent;
    int bone;
    float metresPerUnit;
};

struct ePose {
    Point3 position;
    Quat rotation;
    bool mirrored = false;
};

// Brings a mirrored matrix to the right hand by turning its third axis round; true if it was mirrored.
bool TakeOutMirror(Export& run, const host::INode& node, Matrix3& m) {
    const Point3 third = host::CrossProd(m.GetRow(0), m.GetRow(1));
    if (third.Equals(m.GetRow(2), kHandednessTolerance)) {
        return false;
    }
    if (third.Equals(-m.GetRow(2), kHandednessTolerance)) {
        m.SetRow(2, -m.GetRow(2));
        return true;
    }
    ShowAs(MakeMessage(eMessageId::AnimationsNonOrtho, {.node = host::PathOf(node)}),
           {.title = "ERROR", .parent = run.host->GetMAXHWnd()});
    return false;
}

// Of the node against its parent, both without scale.
ePose PoseAt(const eSampler& sampler, const Matrix3& own, const Matrix3& parent) {
    Matrix3 relative = own * Inverse(parent);
    relative.SetTrans(relative.GetTrans() * sampler.metresPerUnit);
    if (sampler.bone == 0) {
        relative = relative * sampler.run.mirrorMatrix;
    }
    const bool mirrored = TakeOutMirror(sampler.run, sampler.node, relative);
    return {relative.GetTrans(), Quat(relative), mirrored};
}

void WriteRotation(xIo::xSdl::eWriter& writer, const Quat& q) {
    writer.Word("orientation");
    for (const float component : {q.x, q.y, q.z, q.w}) {
        writer.Rounded(component);
    }
    writer.EndLine();
}

void ReportFrame(xIo::xSdl::eWriter& writer, int frame, const eExportFrameBone& entry) {
    writer.Word("frame").Integer(frame).BlockBegin().EndLine();
    if ((entry.flags & (kFrameVisible | kFrameHidden)) != 0) {
        writer.Word("visibility").Integer((entry.flags & kFrameVisible) != 0 ? 1 : 0).EndLine();
    }
    if ((entry.flags & kFramePosition) != 0) {
        writer.Word("position");
        WritePoint3(writer, entry.position);
        writer.EndLine();
    }
    if ((entry.flags & kFrameRotation) != 0) {
        WriteRotation(writer, entry.rotation);
    }
    writer.BlockEndLine();
}

// What the engine carries forward at this point of the animation.
struct eCarried {
    std::optional<ePose> pose;
    bool visible = true;
};

std::uint16_t ChangesSince(const eCarried& carried, const ePose& pose, bool visible, bool isEdge) {
    std::uint16_t flags = 0;
    if (isEdge || !pose.position.Equals(carried.pose->position, kPositionTolerance)) {
        flags |= kFramePosition;
    }
    if (isEdge || !pose.rotation.Equals(carried.pose->rotation, kRotationTolerance)) {
        flags |= kFrameRotation;
    }
    if (isEdge || visible != carried.visible) {
        flags |= visible ? kFrameVisible : kFrameHidden;
    }
    if ((flags & (kFramePosition | kFrameRotation)) != 0 && pose.mirrored) {
        flags |= kFrameMirrored;
    }
    return flags;
}

void StoreSample(const eSampler& sampler, eExportFrameBone& entry, const ePose& pose, bool visible,
                 bool isEdge, eCarried& carried) {
    entry.node = &sampler.node;
    entry.flags = ChangesSince(carried, pose, visible, isEdge);
    carried.visible = visible;
    if ((entry.flags & (kFramePosition | kFrameRotation)) != 0) {
        entry.position = pose.position;
        entry.rotation = pose.rotation;
        carried.pose = pose;
    }
}

// The parent's matrices, where it was sampled just before in the animation; else none.
std::span<const Matrix3> KnownOfParent(const eSampler& sampler, std::size_t animation) {
    const eLastSampled& last = sampler.run.motion->lastSampled;
    return last.node == &sampler.parent ? std::span(last.matrices[animation]) : std::span<const Matrix3>();
}

// Gives the node's matrices without scale, by frame.
std::vector<Matrix3> SampleAnimation(const eSampler& sampler, std::size_t number) {
    const eExportAnimation& animation = sampler.run.motion->animations[number];
    Export& run = sampler.run;
    xIo::xSdl::eWriter& report = *run.texts->animWriter;
    const bool reverse = run.options.reverseAnimation;
    report.Word((format("-= Animation: %s, Node %s =-\n") % animation.name % sampler.node.GetName()).Text());
    const std::span<eExportFrame> frames = run.motion->frames.Of(animation);
    const std::span<const Matrix3> ofParent = KnownOfParent(sampler, number);
    std::vector<Matrix3> own;
    own.reserve(frames.size());
    eCarried carried;
    for (int frame = animation.firstFrame; frame <= animation.lastFrame; ++frame) {
        const host::TimeValue time = host::TimeOfFrame(
            *run.host, reverse ? animation.lastFrame - (frame - animation.firstFrame) : frame);
        own.push_back(NoScale(sampler.node.GetNodeTM(time)));
        const ePose pose =
            PoseAt(sampler, own.back(),
                   ofParent.empty() ? NoScale(sampler.parent.GetNodeTM(time)) : ofParent[own.size() - 1]);
        const bool visible = sampler.node.GetVisibility(time) >= kVisible;
        const bool isEdge = frame == animation.firstFrame || frame == animation.lastFrame;
        const auto index = static_cast<std::size_t>(std::int64_t{frame} - animation.firstFrame);
        eExportFrameBone& entry = frames[index].bones[static_cast<std::size_t>(sampler.bone)];
        StoreSample(sampler, entry, pose, visible, isEdge, carried);
        if (entry.flags != 0) {
            ReportFrame(report, frame, entry);
        }
    }
    return own;
}

}  // namespace

void SampleNode(Export& run, host::INode& node) {
    if (node.IsGroupMember() || NodeIndex(node, nullptr) < 0) {
        return;
    }
    const eSampler sampler{.run = run,
                           .node = node,
                           .parent = *ParentBone(node),
                           .bone = NodeIndex(node, nullptr),
                           .metresPerUnit = MasterScale(run)};
    const std::vector<eExportAnimation>& animations = run.motion->animations;
    std::vector<std::vector<Matrix3>> matrices(animations.size());
    for (std::size_t number = 0; number < animations.size(); ++number) {
        const eExportAnimation& animation = animations[number];
        if (animation.inRange && AnimationTouchesNode(run, node, animation.selection)) {
            matrices[number] = SampleAnimation(sampler, number);
            if (eNodeNote* const note = NoteOf(run, node)) {
                note->animations.push_back(animation.name);
            }
        }
    }
    run.motion->lastSampled = {&node, std::move(matrices)};
}
