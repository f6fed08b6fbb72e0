#include "animation/feeder_motion.h"

#include <string>

#include "animation/animation_table.h"
#include "animation/model_motion.h"
#include "animation/pose_tolerance.h"
#include "run/export.h"
#include "run/tell.h"
#include "scene/bones/find_skin.h"
#include "scene/master_scale.h"

namespace {

using host::Matrix3;

// A row of the matrix counts as turned or scaled from this difference on.
constexpr float kRowTolerance = 1e-4F;

class eFeederCheck {
public:
    eFeederCheck(Export& ownRun, const host::INode& ownFeeder, const host::INode& ownBone)
        : run(ownRun), feeder(ownFeeder), bone(ownBone), inMesh(PlaceAt(run.StaticTime())) {}

    bool MovesAt(host::TimeValue time) const {
        const Matrix3 place = PlaceAt(time);
        for (int row = 0; row < 3; ++row) {
            if (!place.GetRow(row).Equals(inMesh.GetRow(row), kRowTolerance)) {
                return true;
            }
        }
        return !place.GetTrans().Equals(inMesh.GetTrans(), kPositionTolerance);
    }
    bool IsShownApartAt(host::TimeValue time) const {
        return (feeder.GetVisibility(time) >= kVisible) != (bone.GetVisibility(time) >= kVisible);
    }

    // The names of the animations that touch the node and have a frame for which the question holds.
    template <class Question>
    std::string AnimationsWhere(Question question) const {
        std::string names;
        for (const eExportAnimation& animation : run.motion->animations) {
            if (animation.inRange && AnimationTouchesNode(run, feeder, animation.selection) &&
                HoldsSomewhere(animation, question)) {
                names += (names.empty() ? "'" : ", '") + animation.name + "'";
            }
        }
        return names;
    }

    void TellLoss(eMessageId id, const std::string& animations) const {
        if (!animations.empty()) {
            Tell(run, id, {.node = host::PathOf(feeder)}, feeder.GetName(), bone.GetName(), animations);
        }
    }

private:
    // The object in the space of the bone, as the mesh is read; translation in metres.
    Matrix3 PlaceAt(host::TimeValue time) const {
        Matrix3 place = feeder.GetObjTMAfterWSM(time) * Inverse(NoScale(bone.GetNodeTM(time)));
        place.SetTrans(place.GetTrans() * MasterScale(run));
        return place;
    }
    template <class Question>
    bool HoldsSomewhere(const eExportAnimation& animation, Question question) const {
        for (int frame = animation.firstFrame; frame <= animation.lastFrame; ++frame) {
            if (question(host::TimeOfFrame(*run.host, frame))) {
                return true;
            }
        }
        return false;
    }

    Export& run;
    const host::INode& feeder;
    const host::INode& bone;
    const Matrix3 inMesh;
};

}  // namespace

void TellFeederMotion(Export& run, const host::INode& feeder, const host::INode& bone, bool keepsMotion) {
    if (FindSkin(feeder) != nullptr) {
        return;
    }
    const eFeederCheck check(run, feeder, bone);
    if (!keepsMotion) {
        check.TellLoss(eMessageId::FeederMotionLost,
                       check.AnimationsWhere([&](host::TimeValue time) { return check.MovesAt(time); }));
    }
    check.TellLoss(eMessageId::FeederVisibilityLost,
                   check.AnimationsWhere([&](host::TimeValue time) { return check.IsShownApartAt(time); }));
}
