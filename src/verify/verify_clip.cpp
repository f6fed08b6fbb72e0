#include "verify/verify_clip.h"

#include <algorithm>

#include "verify/bone_place.h"

namespace verify {

namespace {

constexpr float kVisible = 0.5F;

class ePoseComparison {
public:
    ePoseComparison(const eVerifiedScene& scene, const eSceneModel& model, const eSceneClip& clip,
                    const ePlayedClip& played, const eTolerances& tolerances, eClipVerdict& verdict)
        : scene_(scene), model_(model), clip_(clip), played_(played), bounds_(tolerances), verdict_(verdict) {
        FindBones();
    }

    void Compare() {
        const int frames = std::min(played_.file.frameCount, clip_.FrameCount());
        for (int frame = 0; frame < frames; ++frame) {
            CompareFrame(frame, played_.At(frame));
        }
        for (const ePlayedBone& bone : bones_) {
            verdict_.bones.push_back(bone.verdict);
        }
    }

private:
    // A bone that is in the file as well as in the scene.
    struct ePlayedBone {
        host::INode* node;
        std::size_t entry;  // in the file
        bool isRoot;        // of the model
        int above;          // the next one up that is played, -1 for none
        eBoneVerdict verdict;
        host::DMatrix3 sceneInModel{};  // of the frame
        host::DMatrix3 fileInModel{};
    };

    void FindBones() {
        std::vector<std::string> expected;
        for (const eSceneBone& bone : model_.bones.bones) {
            if (!MayMove(scene_, bone) || !clip_.Covers(scene_, *bone.node)) {
                continue;
            }
            expected.push_back(bone.name);
            const auto entry = std::ranges::find(played_.file.bones, bone.name);
            if (entry == played_.file.bones.end()) {
                verdict_.findings.Add("missing bone", 0, bone.name);
                continue;
            }
            bones_.push_back({.node = bone.node,
                              .entry = static_cast<std::size_t>(entry - played_.file.bones.begin()),
                              .isRoot = bone.node == model_.root,
                              .above = PlayedAbove(*bone.node),
                              .verdict = {.name = bone.name}});
        }
        for (const std::string& name : played_.file.bones) {
            if (std::ranges::find(expected, name) == expected.end()) {
                verdict_.findings.Add("foreign bone", 0, name);
            }
        }
    }

    int PlayedAbove(const host::INode& node) const {
        const host::INode* above = BoneAbove(node);
        const auto found = std::ranges::find(bones_, above, &ePlayedBone::node);
        return found != bones_.end() ? static_cast<int>(found - bones_.begin()) : -1;
    }

    void CompareFrame(int frame, std::span<const eBonePose> poses) {
        const host::TimeValue time = clip_.TimeOf(scene_, frame);
        for (ePlayedBone& bone : bones_) {
            const eBonePose& pose = poses[bone.entry];
            const std::string place = bone.verdict.name + ", frame " + std::to_string(frame);
            if (!pose.known) {
                verdict_.findings.Add("unknown pose", 0, place);
            }
            const host::DMatrix3 wanted = PlaceInBoneAbove(scene_, *bone.node, time, bone.isRoot);
            ComparePose(bone, wanted, pose, frame, place);
            CompareInModel(bone, wanted, MatrixOf(pose), frame);
            if (pose.visible != (bone.node->GetVisibility(time) >= kVisible)) {
                verdict_.findings.Add("visibility", 0, place);
            }
        }
    }

    void ComparePose(ePlayedBone& bone, const host::DMatrix3& wanted, const eBonePose& pose, int frame,
                     const std::string& place) {
        constexpr double kSinglePrecision = 1e-6;
        const host::DMatrix3 found = MatrixOf(pose);
        const double metres = LargestDifference(wanted.rows[3], found.rows[3]);
        const double slack = kSinglePrecision * Length(wanted.rows[3]);
        bone.verdict.metres.Meet(metres, frame);
        TellIf(metres > bounds_.metres + slack, "position", metres, place);
        if (!IsRotation(wanted)) {
            ++bone.verdict.sheared;
            return;
        }
        if (IsMirrored(wanted) != pose.mirrored) {
            return verdict_.findings.Add("mirror", 0, place);
        }
        const double degrees = AngleBetween(wanted, found);
        bone.verdict.degrees.Meet(degrees, frame);
        TellIf(degrees > bounds_.degrees, "rotation", degrees, place);
    }

    // Differences add up along a limb; the bones that the clip leaves alone move nothing.
    void CompareInModel(ePlayedBone& bone, const host::DMatrix3& wanted, const host::DMatrix3& found,
                        int frame) {
        const ePlayedBone* const above =
            bone.above >= 0 ? &bones_[static_cast<std::size_t>(bone.above)] : nullptr;
        bone.sceneInModel = above != nullptr ? Product(wanted, above->sceneInModel) : wanted;
        bone.fileInModel = above != nullptr ? Product(found, above->fileInModel) : found;
        bone.verdict.inModel.Meet(Length(bone.sceneInModel.rows[3] - bone.fileInModel.rows[3]), frame);
    }

    void TellIf(bool isBroken, const char* kind, double amount, const std::string& place) {
        if (isBroken) {
            verdict_.findings.Add(kind, amount, place);
        }
    }

    const eVerifiedScene& scene_;
    const eSceneModel& model_;
    const eSceneClip& clip_;
    const ePlayedClip& played_;
    eTolerances bounds_;
    eClipVerdict& verdict_;
    std::vector<ePlayedBone> bones_;
};

}  // namespace

void ComparePoses(const eVerifiedScene& scene, const eSceneModel& model, const eSceneClip& clip,
                  const ePlayedClip& played, const eTolerances& tolerances, eClipVerdict& verdict) {
    if (played.file.frameCount != clip.FrameCount()) {
        verdict.findings.Add("length", played.file.frameCount, verdict.name);
    }
    ePoseComparison(scene, model, clip, played, tolerances, verdict).Compare();
}

}  // namespace verify
