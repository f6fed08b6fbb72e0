#include "mesh/read/skin_bone_check.h"

#include <algorithm>
#include <string>

#include "run/export.h"
#include "run/tell.h"
#include "scene/bones/skeleton_absence.h"
#include "scene/export_bone.h"

namespace {

void TellBonesOutsideSkeleton(Export& run, const eExportBone& bone) {
    eBilingual strays;
    for (host::INode* skinBone : bone.mesh.skinBones) {
        if (skinBone == nullptr) {
            continue;
        }
        if (const eBilingual reason = WhyOutsideSkeleton(run, *skinBone); !reason.IsEmpty()) {
            strays += FillBoth("\n'%s': %s.", "\n'%s': %s.", skinBone->GetName(), reason);
        }
    }
    if (!strays.IsEmpty()) {
        Tell(run, eMessageId::SkinBonesOutsideSkeleton, {.node = host::PathOf(*bone.node)},
             bone.node->GetName(), strays);
    }
}

// A hidden member of a group is exported like a visible one.
void TellGeometryOfHiddenBones(Export& run, const eExportBone& bone) {
    for (const host::INode* skinBone : bone.mesh.skinBones) {
        if (skinBone != nullptr && skinBone->IsNodeHidden() &&
            std::ranges::find(bone.mesh.faceNodes, skinBone) != bone.mesh.faceNodes.end()) {
            Tell(run, eMessageId::SkinHiddenBone, {.node = host::PathOf(*skinBone)}, skinBone->GetName(),
                 bone.node->GetName());
        }
    }
}

}  // namespace

void TellStraySkinBones(Export& run, const eExportBone& bone) {
    TellBonesOutsideSkeleton(run, bone);
    TellGeometryOfHiddenBones(run, bone);
}
