#include "mesh/extract_node_mesh.h"

#include "animation/animation_table.h"
#include "animation/feeder_motion.h"
#include "animation/model_motion.h"
#include "animation/sample_node.h"
#include "mesh/read/animated_part.h"
#include "mesh/read/extract_mesh.h"
#include "run/export.h"
#include "run/tell.h"
#include "scene/bones/bone_tree.h"
#include "scene/current_model.h"
#include "scene/properties/node_name.h"
#include "scene/run_journal.h"

namespace {

// True, and told, if the mesh that the node feeds has been written already.
bool ComesTooLate(Export& run, const host::INode& node, const eExportBone& bone,
                  const host::INode* commonTarget) {
    if (!bone.isWritten || commonTarget == nullptr) {
        return false;
    }
    Tell(run, eMessageId::SharedMeshTooLate, {.node = host::PathOf(node)}, node.GetName(),
         commonTarget->GetName());
    return true;
}

void ReadMeshFrames(Export& run, const host::INode& node, eAnimatedPart part) {
    for (const eExportAnimation& animation : run.motion->animations) {
        if (animation.inRange && AnimationTouchesNode(run, node, animation.selection)) {
            part.ReadFrames(animation);
        }
    }
}

void ReadGeometry(Export& run, host::INode& node, host::INode* commonTarget) {
    eExportBone* bone = BoneOfMesh(run, node, commonTarget);
    if (bone == nullptr || ComesTooLate(run, node, *bone, commonTarget)) {
        return;
    }
    run.model->meshFrame = 0;
    const eExportMeshFrame& firstFrame = bone->mesh.frames.front();
    const std::size_t facesBefore = bone->mesh.faces.size();
    const eFrameExtent begin = ExtentOf(firstFrame);
    ExtractMesh(run, node, run.StaticTime(), commonTarget);
    const eFrameExtent end = ExtentOf(firstFrame);
    // What could not be read once has been told, and is not read again for every frame.
    if (begin == end) {
        return;
    }
    const host::INode& owner = commonTarget != nullptr ? *commonTarget : OutOfGroup(node);
    if (eNodeNote* const note = NoteOf(run, node)) {
        note->fedMesh = &owner;
        note->faces = static_cast<int>(bone->mesh.faces.size() - facesBefore);
    }
    if (run.options.exportAnimation != 0 && &owner != &node) {
        TellFeederMotion(run, node, owner, bone->mesh.frames.size() > 1);
    }
    if (commonTarget == nullptr) {
        return;
    }
    if (commonTarget != &node) {
        run.model->sharedMeshes.feeds.push_back({&node, commonTarget});
    }
    if (run.options.exportAnimation != 0) {
        ReadMeshFrames(run, node, eAnimatedPart(run, node, *commonTarget, *bone, begin, end));
    }
}

}  // namespace

void ExtractNodeMesh(Export& run, host::INode& node, host::INode* meshTarget, host::INode* commonTarget) {
    const host::Object* object = node.EvalWorldState(0).obj;
    if (object == nullptr || object->ClassID() == host::kTargetClass) {
        return;
    }
    if (run.options.exportMesh != 0 && (meshTarget == nullptr || meshTarget == &node) && node.Renderable()) {
        ReadGeometry(run, node, commonTarget);
    }
    if (GetLodLevel(node) == 0 && run.options.exportAnimation != 0) {
        SampleNode(run, node);
    }
}
