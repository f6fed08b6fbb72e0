#include "animation/animation_note.h"

#include "animation/animation_table.h"
#include "animation/model_motion.h"
#include "animation/pose_tolerance.h"
#include "run/export.h"
#include "scene/current_model.h"
#include "scene/run_journal.h"

namespace {

// What an animation's file holds of a bone.
struct eBoneShare {
    bool isHeld = false;
    bool isMoving = false;
};

bool LeavesPose(const eExportFrameBone& first, const eExportFrameBone& entry) {
    const bool hides = (first.flags & kFrameVisible) != 0 && (entry.flags & kFrameHidden) != 0;
    const bool shows = (first.flags & kFrameHidden) != 0 && (entry.flags & kFrameVisible) != 0;
    return hides || shows || (entry.flags & kFrameVertices) != 0 ||
           ((entry.flags & kFramePosition) != 0 &&
            !entry.position.Equals(first.position, kPositionTolerance)) ||
           ((entry.flags & kFrameRotation) != 0 &&
            !entry.rotation.Equals(first.rotation, kRotationTolerance));
}

eBoneShare ShareOf(Export& run, const eExportAnimation& animation, std::size_t bone) {
    eBoneShare share;
    const eExportFrameBone* first = nullptr;
    for (int frame = animation.firstFrame; frame <= animation.lastFrame && !share.isMoving; ++frame) {
        const eExportFrameBone& entry = run.motion->frames.At(frame).bones[bone];
        if (entry.flags == 0 || !AnimationTouchesNode(run, *entry.node, animation.selection)) {
            continue;
        }
        share.isMoving = share.isHeld && LeavesPose(*first, entry);
        first = share.isHeld ? first : &entry;
        share.isHeld = true;
    }
    return share;
}

}  // namespace

void NoteAnimation(Export& run, const eExportAnimation& animation, const eName& file) {
    if (run.journal == nullptr) {
        return;
    }
    eAnimationNote note{.model = run.model->currentRoot,
                        .name = animation.name,
                        .firstFrame = animation.firstFrame,
                        .lastFrame = animation.lastFrame,
                        .file = file};
    if (animation.selection >= 0) {
        note.selectionSet = run.host->GetNamedSelSetName(animation.selection);
    }
    const std::size_t boneCount = file.IsEmpty() ? 0 : run.model->boneNames.size();
    for (std::size_t bone = 0; bone < boneCount; ++bone) {
        const eBoneShare share = ShareOf(run, animation, bone);
        if (share.isHeld) {
            note.bones.push_back(run.model->boneNames[bone]);
        }
        if (share.isMoving) {
            note.movingBones.push_back(run.model->boneNames[bone]);
        }
    }
    run.journal->animations.push_back(std::move(note));
}
