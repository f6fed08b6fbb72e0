#include "scene/skeleton/mesh_source.h"

#include <string>

#include "base/ansi.h"
#include "run/export.h"
#include "run/resource_sets.h"
#include "run/run_flags.h"
#include "run/tell.h"
#include "scene/bones/bone_tree.h"
#include "scene/bones/find_instance.h"
#include "scene/bones/find_skin.h"
#include "scene/current_model.h"
#include "scene/properties/node_kind.h"
#include "scene/properties/node_name.h"
#include "scene/properties/node_properties.h"
#include "scene/properties/prop_text.h"
#include "scene/skeleton/bone_step.h"
#include "scene/skeleton/mesh_stage.h"
#include "scene/skeleton/step_notes.h"

namespace {

eExportBone& SlotOf(Export& run, const eBoneStep& step) {
    return run.model->bones[static_cast<std::size_t>(step.index)];
}

// A box without icon.
void TellCommonMesh(Export& run, eMessageId id, const host::INode& node, const char* key,
                    const std::string& name) {
    ShowAs(MakeMessage(id, {.node = host::PathOf(node), .property = key}, name),
           {.title = "Ошибка"_ansi, .parent = run.host->GetMAXHWnd()});
}

// The node that the property names; null, with a message, if there is none.
host::INode* FindNamed(Export& run, const host::INode& asking, const char* key, const std::string& name) {
    host::INode* node = run.host->GetINodeByName(name.c_str());
    if (node == nullptr) {
        TellCommonMesh(run, eMessageId::SharedMeshNoBone, asking, key, name);
    }
    return node;
}

bool FindSharedMesh(Export& run, eBoneStep& step) {
    std::string name;
    step.node.GetUserPropString("Mesh", name);
    if (!name.empty()) {
        step.meshTarget = FindNamed(run, step.node, "Mesh", name);
        return step.meshTarget != nullptr;
    }
    const host::Object* object = step.node.EvalWorldState(run.StaticTime()).obj;
    host::INode* root =
        run.resources->commonOwner != nullptr ? run.resources->commonOwner : run.model->currentRoot;
    step.meshTarget = FindInstance(run, object, *root);
    return true;
}

// Whose mesh the geometry of the node goes to.
host::INode& MeshOwner(const eBoneStep& step) {
    return step.commonNode != nullptr ? *step.commonNode : step.node;
}

// A node with "CommonMesh" of its own has a mesh animated by frames, with all frames of the table.
std::size_t MeshFrames(const Export& run, const host::INode& owner) {
    std::string name;
    const bool isAnimated = owner.GetUserPropString("CommonMesh", name) && name.empty();
    return isAnimated ? run.model->meshFrameCount : 1;
}

bool FindMergedMesh(Export& run, eBoneStep& step) {
    std::string name;
    if (step.node.GetUserPropString("CommonMesh", name)) {
        step.commonNode = name.empty() ? &step.node : FindNamed(run, step.node, "CommonMesh", name);
        if (step.commonNode == nullptr) {
            return false;
        }
        step.index = FindBoneIndex(step.node, step.commonNode);
    }
    if (step.index < 0) {
        TellCommonMesh(run, eMessageId::SharedMeshNotAbove, step.node, "CommonMesh", name);
        return false;
    }
    // A node may feed a mesh whose own node comes later in the walk, so that either of them sizes it.
    SlotOf(run, step).mesh.frames.resize(MeshFrames(run, MeshOwner(step)));
    return true;
}

// Null if the node asks for none.
const char* MeshProperty(const eBoneStep& step) {
    int voxels = 0;
    step.node.GetUserPropInt("Voxels", voxels);
    if (voxels != 0) {
        return "Voxels";
    }
    if (step.commonNode != nullptr) {
        return "CommonMesh";
    }
    return ePropText(step.userProps).Find("Poly") ? "Poly" : nullptr;
}

// What becomes of the wish.
eMeshWish FateOfWish(const eBoneStep& step) {
    if (step.wishedBy == nullptr) {
        return eMeshWish::None;
    }
    if (!step.node.Renderable()) {
        return eMeshWish::NotRenderable;
    }
    if (exportSelected && !step.node.Selected()) {
        return eMeshWish::NotSelected;
    }
    return IsShape(step.node) ? eMeshWish::Lines : eMeshWish::Granted;
}

// Shared meshes of a Structure and of the models nested in it go where all of them find them, and so does
// everything of the Structure itself: it has no other file. A model that stands alone keeps its meshes.
eExportResourceSet& SetOf(Export& run, const eBoneStep& step) {
    const bool isCommon =
        run.resources->commonPending && (run.model->structureMode || step.meshTarget != nullptr);
    return isCommon ? run.resources->commonResources : run.resources->modelResources;
}

// A mesh is found by its name alone. Bones of one model have names of their own, but models that share a set
// may each have a bone of that name.
void TellTakenName(Export& run, const eBoneStep& step) {
    const eMeshOwner own{&step.node, run.model->currentRoot};
    const auto [entry, isFree] = run.model->sharedMeshes.owners.try_emplace(step.meshName.Text(), own);
    if (isFree) {
        return;
    }
    const eMeshOwner& first = entry->second;
    Tell(run, eMessageId::SharedMeshTakenName, {.node = host::PathOf(*own.node)}, first.node->GetName(),
         first.root->GetName(), own.node->GetName(), own.root->GetName(), step.meshName.Text());
}

void RememberFate(Export& run, const eBoneStep& step, bool isWritten) {
    const eExportResourceSet* shared =
        run.resources->commonPending ? &run.resources->commonResources : &run.resources->modelResources;
    eMeshFate fate = SlotOf(run, step).isRefused ? eMeshFate::Refused : eMeshFate::Empty;
    if (isWritten) {
        fate = step.targetSet == shared ? eMeshFate::Shared : eMeshFate::Elsewhere;
    }
    run.model->sharedMeshes.fates[&step.node] = fate;
}

}  // namespace

void TellMemberWithoutMesh(Export& run, const eBoneStep& step) {
    const bool asksForMesh = run.options.exportMesh != 0 && step.node.IsGroupMember() &&
                             step.node.Renderable() && ePropText(step.userProps).Find("Poly");
    if (!asksForMesh || step.commonNode != nullptr || SlotOf(run, step).hasMesh != 0) {
        return;
    }
    Tell(run, eMessageId::GroupsMemberWithoutMesh, {.node = host::PathOf(step.node), .property = "Poly"},
         step.node.GetName(), OutOfGroup(step.node).GetName());
}

bool FindMeshSource(Export& run, eBoneStep& step) {
    return FindSharedMesh(run, step) && FindMergedMesh(run, step);
}

void FillSlot(Export& run, const eBoneStep& step) {
    eExportBone& slot = SlotOf(run, step);
    const host::INode& shown = step.meshTarget != nullptr ? *step.meshTarget : step.node;
    const bool hasMesh =
        step.commonNode != nullptr || FindSkin(step.node) != nullptr || HasUserProp(shown, "Poly");
    slot.commonMesh = step.commonNode != nullptr;
    slot.node = &MeshOwner(step);
    slot.hasMesh = hasMesh ? 1 : 0;
}

void ChooseMeshSet(Export& run, eBoneStep& step) {
    const host::INode& shown = step.meshTarget != nullptr ? *step.meshTarget : step.node;
    step.meshName = CleanNodeName(shown.GetName(), true);
    step.wishedBy = MeshProperty(step);
    step.wish = FateOfWish(step);
    NoteMeshSource(run, step);
    const bool isOwn = (step.meshTarget == nullptr || step.meshTarget == &step.node) &&
                       (step.commonNode == nullptr || step.commonNode == &step.node);
    if (run.options.exportMesh != 0 && step.wish == eMeshWish::Granted && isOwn) {
        step.targetSet = &SetOf(run, step);
    }
}

void WriteOwnMesh(Export& run, eMeshStage& meshStage, const eBoneStep& step) {
    if (step.targetSet == nullptr) {
        return;
    }
    const eExportBone& slot = SlotOf(run, step);
    if (slot.hasMesh == 0) {
        TellOfNode(run, eMessageId::MeshVoxels, *slot.node);
        RememberFate(run, step, false);
        return;
    }
    const bool isWritten = meshStage.WriteMesh(run, *step.targetSet, step.meshName, step.index);
    if (!isWritten && !slot.isRefused) {
        TellOfNode(run, eMessageId::MeshNoPolygons, *slot.node);
    }
    if (isWritten && step.targetSet == &run.resources->commonResources) {
        TellTakenName(run, step);
    }
    if (isWritten) {
        NoteMeshFile(run, step);
    }
    RememberFate(run, step, isWritten);
}
