#include "mesh/read/animated_part.h"

#include <algorithm>
#include <vector>

#include "animation/animation_table.h"
#include "animation/model_motion.h"
#include "animation/pose_tolerance.h"
#include "mesh/read/extract_mesh.h"
#include "run/export.h"
#include "run/tell.h"
#include "scene/bones/find_skin.h"
#include "scene/current_model.h"
#include "scene/master_scale.h"
#include "scene/triangle_mesh.h"

eAnimatedPart::eAnimatedPart(Export& ownRun, host::INode& ownNode, host::INode& ownTarget,
                             eExportBone& ownBone, const eFrameExtent& ownBegin, const eFrameExtent& ownEnd)
    : run(ownRun), node(ownNode), commonTarget(ownTarget), bone(ownBone), begin(ownBegin), end(ownEnd) {}

void eAnimatedPart::ReadFrames(const eExportAnimation& animation) {
    if (FeedsStillMesh()) {
        return TellStillMesh(animation);
    }
    if (!AnimationTouchesNode(run, commonTarget, animation.selection)) {
        return TellUncoveredMesh(animation);
    }
    const bool startsAtStaticFrame = run.motion->frames.MeshFrameOf(animation.firstFrame) == 0;
    const int first = animation.firstFrame + (startsAtStaticFrame ? 1 : 0);
    const int last = animation.lastFrame;
    for (int frame = first; frame <= last; ++frame) {
        // Backwards, the frames are filled from the same start on with the times from the end on.
        ReadFrame(frame, host::TimeOfFrame(*run.host,
                                           run.options.reverseAnimation ? last - (frame - first) : frame));
    }
}

void eAnimatedPart::ReadFrame(int number, host::TimeValue time) {
    const std::size_t meshFrame = run.motion->frames.MeshFrameOf(number);
    eExportMeshFrame& frame = bone.mesh.frames[meshFrame];
    if (frame.positions.size() > begin.vertices) {
        return;
    }
    FillFromFirstFrame(bone.mesh, frame, begin);
    run.model->meshFrame = static_cast<int>(meshFrame);
    ExtractMesh(run, node, time, &commonTarget);
    run.model->meshFrame = 0;
    if (ExtentOf(frame) != end) {
        TellOtherShape(number);
        CutFrame(frame, begin);
        FillFromFirstFrame(bone.mesh, frame, end);
    }
}

bool eAnimatedPart::FeedsStillMesh() const {
    return bone.mesh.frames.size() == 1 && &node != &commonTarget;
}

// A skin moves its mesh in the game, by the bones.
bool eAnimatedPart::ChangesShape(const eExportAnimation& animation) const {
    if (FindSkin(node) != nullptr) {
        return false;
    }
    const eTriangleMesh still(node, run.StaticTime());
    const std::vector<host::Point3> vertices = still.Mesh().verts;
    const float tolerance = kPositionTolerance / MasterScale(run);
    const auto isSame = [&](const host::Point3& a, const host::Point3& b) { return a.Equals(b, tolerance); };
    for (int frame = animation.firstFrame; frame <= animation.lastFrame; ++frame) {
        const eTriangleMesh moved(node, host::TimeOfFrame(*run.host, frame));
        if (moved.IsValid() && !std::ranges::equal(moved.Mesh().verts, vertices, isSame)) {
            return true;
        }
    }
    return false;
}

void eAnimatedPart::TellStillMesh(const eExportAnimation& animation) {
    if (toldStillMesh || !ChangesShape(animation)) {
        return;
    }
    toldStillMesh = true;
    Tell(run, eMessageId::AnimatedMeshStillOwner, {.node = host::PathOf(node), .animation = animation.name},
         node.GetName(), animation.name, commonTarget.GetName());
}

void eAnimatedPart::TellUncoveredMesh(const eExportAnimation& animation) const {
    Tell(run, eMessageId::AnimatedMeshUncovered, {.node = host::PathOf(node), .animation = animation.name},
         animation.name, node.GetName(), commonTarget.GetName(), commonTarget.GetName());
}

void eAnimatedPart::TellOtherShape(int number) {
    if (toldOtherShape) {
        return;
    }
    toldOtherShape = true;
    Tell(run, eMessageId::AnimatedMeshOtherShape, {.node = host::PathOf(node)}, node.GetName(), number);
}
