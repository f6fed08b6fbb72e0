#include "verify/verify_skeleton.h"

#include <set>

#include "verify/bone_place.h"
#include "verify/written_blocks.h"

namespace verify {

namespace {

class eSkeletonComparison {
public:
    eSkeletonComparison(const eVerifiedScene& scene, const eSceneModel& model, const eWrittenModel& written,
                        const eTolerances& tolerances, eFindings& findings)
        : scene_(scene), model_(model), written_(written), bounds_(tolerances), findings_(findings) {}

    void Compare() {
        std::set<std::string> expected;
        for (const eSceneBone& bone : model_.bones.bones) {
            const int number = written_.NumberOf(bone.name);
            if (bone.level != 0) {
                continue;
            }
            expected.insert(bone.name);
            if (number < 0) {
                findings_.Add("missing bone", 0, bone.name);
            } else {
                CompareBone(bone, written_.bones[static_cast<std::size_t>(number)]);
            }
        }
        for (const eWrittenBone& bone : written_.bones) {
            if (!expected.contains(bone.name)) {
                findings_.Add("foreign bone", 0, bone.name);
            }
        }
    }

private:
    void CompareBone(const eSceneBone& bone, const eWrittenBone& written) {
        CompareBoneAbove(bone, written);
        const bool isRoot = bone.node == model_.root;
        host::DMatrix3 wanted = PlaceInBoneAbove(scene_, *bone.node, scene_.StaticTime(), isRoot);
        if (isRoot) {
            // The model stands at the origin wherever its root does.
            wanted = {};
            wanted.rows[1][1] = -1;
        }
        const double metres = LargestDifference(wanted.rows[3], written.local.rows[3]);
        if (metres > bounds_.metres + TextSlack(Length(wanted.rows[3]))) {
            findings_.Add("bone position", metres, bone.name);
        }
        if (!IsRotation(wanted)) {
            return;
        }
        const bool isSameSide = IsMirrored(wanted) == IsMirrored(written.local);
        const double degrees = isSameSide ? AngleBetween(wanted, written.local) : 180;
        if (degrees > bounds_.degrees) {
            findings_.Add("bone rotation", degrees, bone.name);
        }
    }

    void CompareBoneAbove(const eSceneBone& bone, const eWrittenBone& written) {
        const host::INode* above = bone.node != model_.root ? bone.node->GetParentNode() : nullptr;
        while (above != nullptr && model_.bones.NumberOf(*above) < 0) {
            above = above->GetParentNode();
        }
        const std::string wanted =
            above != nullptr
                ? model_.bones.bones[static_cast<std::size_t>(model_.bones.NumberOf(*above))].name
                : std::string();
        const std::string found =
            written.above >= 0 ? written_.bones[static_cast<std::size_t>(written.above)].name : std::string();
        if (wanted != found) {
            findings_.Add("bone above", 0, bone.name + ": " + found + " instead of " + wanted);
        }
    }

    const eVerifiedScene& scene_;
    const eSceneModel& model_;
    const eWrittenModel& written_;
    eTolerances bounds_;
    eFindings& findings_;
};

}  // namespace

void CompareSkeleton(const eVerifiedScene& scene, const eSceneModel& model, const eWrittenModel& written,
                     const eTolerances& tolerances, eFindings& findings) {
    if (!written.problem.empty()) {
        findings.Add("missing model", 0, written.problem);
        return;
    }
    eSkeletonComparison(scene, model, written, tolerances, findings).Compare();
}

}  // namespace verify
