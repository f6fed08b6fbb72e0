#include "scene/skeleton/bone_writer.h"

#include <algorithm>
#include <vector>

#include "run/export.h"
#include "run/model_texts.h"
#include "run/run_flags.h"
#include "run/tell.h"
#include "scene/bones/bone_tree.h"
#include "scene/bones/find_skin.h"
#include "scene/bones/local_matrix.h"
#include "scene/bones/lod_nodes.h"
#include "scene/current_model.h"
#include "scene/master_scale.h"
#include "scene/properties/node_name.h"
#include "scene/properties/node_properties.h"
#include "scene/properties/prop_text.h"
#include "scene/skeleton/bone_header.h"
#include "scene/skeleton/ik_limits.h"
#include "scene/skeleton/left_out.h"
#include "scene/skeleton/matrix_text.h"
#include "scene/skeleton/mesh_source.h"
#include "scene/skeleton/mesh_stage.h"
#include "scene/skeleton/side_lists.h"
#include "scene/skeleton/step_notes.h"
#include "scene/skeleton/structure_bone.h"
#include "scene/skeleton/view_writer.h"

namespace {

eBoneStep LookAt(Export& run, host::INode& node, host::INode* commonTarget, std::uint32_t flags) {
    const bool isCandidate = IsBoneCandidate(node, node.EvalWorldState(run.StaticTime()).obj);
    const bool isMember = node.IsGroupMember();
    std::string name = CleanNodeName(node.GetName(), true);
    std::string userProps = NormalizeUserProps(node, false);
    std::string decidedBy;
    const eNodeKind kind = ClassifyNode(node, userProps, &decidedBy);
    const int index = NodeIndex(node, nullptr);
    const int level = LodLevelOfName(name);
    const bool isOrdinary = kind == eNodeKind::Ordinary;
    return {.node = node,
            .flags = flags,
            .index = index,
            .kind = kind,
            .level = level,
            .isBone = isOrdinary && isCandidate && !isMember,
            .isLoneNode = isOrdinary && !isCandidate && !isMember,
            .name = std::move(name),
            .userProps = std::move(userProps),
            .decidedBy = std::move(decidedBy),
            .commonNode = isMember ? commonTarget : nullptr};
}

// A hidden bone takes its subtree with it, and so does any other hidden node that the numbering has left out.
// A detail level is written through its bone only; one that no bone has called for has no number.
bool IsLeftOut(const eBoneStep& step) {
    const bool isDetail = step.isBone && step.level != 0 && (step.flags & DetailEntry) == 0;
    const bool isUnnumbered = step.isBone && step.index < 0;
    return isDetail || isUnnumbered || ((step.isBone || step.isLoneNode) && step.node.IsNodeHidden());
}

// The root stands at the origin whatever its place in the scene, mirrored into the engine's space.
void SettleLocalMatrix(Export& run, eBoneStep& step) {
    step.local = MatrixInParentBone(step.node, run.StaticTime());
    if (!IsOrthonormal(step.local)) {
        Tell(nullptr, eMessageId::BonesMatrix, {.node = host::PathOf(step.node)}, step.name);
    }
    if ((step.flags & RootBone) != 0) {
        const host::Point3 lengths{host::Length(step.local.GetRow(0)), host::Length(step.local.GetRow(1)),
                                   host::Length(step.local.GetRow(2))};
        step.local = host::ScaleMatrix(lengths) * run.mirrorMatrix;
    }
}

void TellProgress(Export& run, const eBoneStep& step) {
    if (run.model->boneCount > 0 && step.index >= 0) {
        run.host->ProgressUpdate(static_cast<int>(std::int64_t{100} * step.index / run.model->boneCount));
    }
}

void ReadGeometry(Export& run, eMeshStage& meshStage, const eBoneStep& step) {
    if (step.kind != eNodeKind::Ordinary || (exportSelected && !step.node.Selected()) ||
        run.options.exportGeometry == 0 || FindBoneIndex(step.node, step.commonNode) < 0) {
        return;
    }
    const host::Object* object = step.node.EvalWorldState(0).obj;
    if (object == nullptr) {
        return;
    }
    const std::uint32_t superClass = object->SuperClassID();
    if (superClass == host::kGeometrySuperClass) {
        TellMemberWithoutMesh(run, step);
    }
    if (superClass == host::kGeometrySuperClass || superClass == host::kHelperSuperClass) {
        meshStage.ExtractNodeMesh(run, step.node, step.meshTarget, step.commonNode);
    }
}

// The bounds of the mesh read so far. A bone that only shows another's mesh has the corner of its object.
void SettleBounds(Export& run, const eBoneStep& step) {
    eExportBone& slot = run.model->bones[static_cast<std::size_t>(step.index)];
    slot.box = {{0, 0, 0}, {0, 0, 0}};
    slot.pivot = {0, 0, 0};
    if (!slot.mesh.frames.empty() && !slot.mesh.frames.front().positions.empty()) {
        host::Box3 bounds;
        for (const host::Point3& position : slot.mesh.frames.front().positions) {
            bounds += position;
        }
        slot.box = bounds;
        slot.pivot = bounds.pmin;
    } else if (step.meshTarget != nullptr) {
        if (host::Object* object = step.node.EvalWorldState(0).obj) {
            slot.pivot = object->GetDeformBBox(run.StaticTime()).pmin * MasterScale(run);
        }
    }
}

void WriteBoneBody(Export& run, const eBoneStep& step) {
    if (step.level == 0) {
        if (run.options.exportIK != 0) {
            WriteIkLimits(run, step.node, step.userProps,
                          run.model->bones[static_cast<std::size_t>(step.index)].ikType);
        }
        WriteMatrix(run, step.local);
        if (step.node.GetVisibility(run.StaticTime()) < 0.5F) {
            run.texts->mdlWriter->BlockBegin().Word("visibility").Integer(0).BlockEndLine();
        }
    }
    SettleBounds(run, step);
    if (step.targetSet != nullptr || (step.meshTarget != nullptr && step.wish == eMeshWish::Granted)) {
        WriteView(run, step);
    }
}

void WriteDetailLevels(Export& run, eMeshStage& meshStage, const eBoneStep& step,
                       const std::vector<host::INode*>& details) {
    const bool lastOff = step.hasDetails && ePropText(step.userProps).Find("LODLastOff");
    for (host::INode* detail : details) {
        const bool isLast = !lastOff && detail == details.back();
        WriteBone(run, meshStage, *detail, nullptr, isLast ? DetailEntry | LastDetail : DetailEntry);
    }
}

// A model nested in a Structure is no part of the skeleton; the game gets to know where it belongs.
void WritePlace(Export& run, const eBoneStep& step, const host::INode& child) {
    std::string model;
    child.GetUserPropString("Model", model);
    const eName title = eName(CleanNodeName(model, false)).Part(eName::Title);
    run.texts->defWriter->BlockBegin().Word("place").String(step.name).String(title.Text()).BlockEndLine();
}

bool WriteChild(Export& run, eMeshStage& meshStage, const eBoneStep& step, host::INode& child) {
    if (run.model->structureMode && !child.IsGroupMember() && HasUserProp(child, "Model")) {
        WritePlace(run, step, child);
        return true;
    }
    if (step.node.IsGroupMember() && !child.IsGroupMember()) {
        NoteWalkEnd(run, child, eLeftOut::OutOfGroup);
        TellOfNode(run, eMessageId::BonesInsideGroup, child);
        return false;
    }
    return WriteBone(run, meshStage, child, step.commonNode, 0);
}

bool WriteChildren(Export& run, eMeshStage& meshStage, const eBoneStep& step) {
    for (int i = 0; i < step.node.NumberOfChildren(); ++i) {
        if (!WriteChild(run, meshStage, step, *step.node.GetChildNode(i))) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool WriteBone(Export& run, eMeshStage& meshStage, host::INode& node, host::INode* commonTarget,
               std::uint32_t flags) {
    if (run.host->GetCancel()) {
        return false;
    }
    eBoneStep step = LookAt(run, node, commonTarget, flags);
    if (IsLeftOut(step)) {
        NoteStepLeftOut(run, step);
        if (step.isLoneNode) {
            TellLeftOut(run, node);
        }
        return true;
    }
    NoteStep(run, step);
    if (step.isBone) {
        if (!FindMeshSource(run, step)) {
            NoteWalkEnd(run, node, eLeftOut::NoSource);
            return false;
        }
        SettleLocalMatrix(run, step);
        FillSlot(run, step);
        ChooseMeshSet(run, step);
        if (step.level == 0) {
            WriteBoneHeader(run, step);
        }
    }
    TellProgress(run, step);
    SortOntoLists(run, step);
    ReadGeometry(run, meshStage, step);

    bool goesOn = true;
    if (step.kind == eNodeKind::Ordinary) {
        if (step.isBone) {
            std::vector<host::INode*> details;
            if (step.level == 0) {
                FindLodNodes(run, node, details);
            }
            step.hasDetails = !details.empty() || ePropText(step.userProps).Find("LODLastOff");
            WriteBoneBody(run, step);
            WriteDetailLevels(run, meshStage, step, details);
        }
        goesOn = WriteChildren(run, meshStage, step);
        if (goesOn) {
            WriteOwnMesh(run, meshStage, step);
        }
        if (step.isBone && step.level == 0) {
            run.texts->mdlWriter->BlockEndLine();
        }
    }
    if (goesOn && (flags & RootBone) != 0) {
        WriteStructureBone(run, step.userProps);
    }
    return goesOn;
}
