#include "mesh/read/skin_bone_check.h"

#include <algorithm>
#include <string>

#include "base/ansi.h"
#include "base/format.h"
#include "base/user_message.h"
#include "run/export.h"
#include "scene/bones/skeleton_absence.h"
#include "scene/export_bone.h"

namespace {

void TellBonesOutsideSkeleton(Export& run, const eExportBone& bone) {
    std::string strays;
    for (host::INode* skinBone : bone.mesh.skinBones) {
        if (skinBone == nullptr) {
            continue;
        }
        if (const std::string reason = WhyOutsideSkeleton(run, *skinBone); !reason.empty()) {
            strays += (format("\n'%s': %s.") % skinBone->GetName() % reason).Text();
        }
    }
    if (!strays.empty()) {
        ShowError(
            run.host->GetMAXHWnd(),
            (format("Скин мэша '%s' содержит кости, которых нет в скелете:"_ansi) % bone.node->GetName())
                    .Text() +
                strays);
    }
}

// A hidden member of a group is exported like a visible one.
void TellGeometryOfHiddenBones(Export& run, const eExportBone& bone) {
    for (const host::INode* skinBone : bone.mesh.skinBones) {
        if (skinBone != nullptr && skinBone->IsNodeHidden() &&
            std::ranges::find(bone.mesh.faceNodes, skinBone) != bone.mesh.faceNodes.end()) {
            const auto text =
                format(
                    "Кость '%s' скина '%s' скрыта, но входит в его группу, и ее геометрия записана в мэш.\n"
                    "Необходимо вынести кость из группы."_ansi) %
                skinBone->GetName() % bone.node->GetName();
            ShowWarning(run.host->GetMAXHWnd(), text.Text());
        }
    }
}

}  // namespace

void TellStraySkinBones(Export& run, const eExportBone& bone) {
    TellBonesOutsideSkeleton(run, bone);
    TellGeometryOfHiddenBones(run, bone);
}
