#include "export/skeleton_block.h"

#include "animation/animation_table.h"
#include "animation/model_motion.h"
#include "export/mesh_stage_driver.h"
#include "material/write_materials.h"
#include "messages/phrase.h"
#include "run/export.h"
#include "run/model_texts.h"
#include "run/resource_sets.h"
#include "scene/current_model.h"
#include "scene/skeleton/bone_writer.h"
#include "scene/skeleton/mirrored_views.h"
#include "scene/skeleton/missing_meshes.h"

namespace {

void EmptySlots(Export& run) {
    run.model->bones.clear();
    run.model->bones.resize(static_cast<std::size_t>(run.model->boneCount));
    run.motion->frames = {};
    run.motion->lastSampled = {};
    if (run.options.exportAnimation != 0) {
        run.motion->frames = eFrameTable(run.motion->animations, run.model->boneCount);
    }
    run.model->meshFrameCount = run.motion->frames.MeshFrameCount();
}

void OpenStructure(Export& run) {
    if (run.model->structureMode) {
        run.texts->defWriter->BlockBegin().String("placer").BlockEndLine();
        run.texts->defWriter->BlockBegin().String("structure").EndLine();
    }
}

void CloseStructure(Export& run) {
    if (run.model->structureMode) {
        run.texts->defWriter->BlockEndLine();
    }
}

// The mesh stage may change the scene; the hold takes that back. A walk that stops has told why, and what it
// has written so far counts.
void WalkBones(Export& run) {
    eMeshStageDriver meshStage;
    run.host->theHold().Begin();
    WriteBone(run, meshStage, *run.model->currentRoot, nullptr, DetailEntry | RootBone);
    run.host->theHold().Cancel();
    if (!run.resources->commonPending) {
        TellMirroredInstances(run);
        TellMissingMeshes(run);
    }
}

void WriteModelMaterials(Export& run) {
    if (run.options.exportMesh == 0) {
        return;
    }
    const eExportResourceSet& set =
        run.resources->commonPending ? run.resources->commonResources : run.resources->modelResources;
    const std::size_t before = set.materials.size();
    WriteMaterials(run, run.resources->commonPending);
    run.modelReports[run.model->modelIndex].materials = static_cast<int>(set.materials.size() - before);
}

}  // namespace

void WriteSkeletonBlock(Export& run) {
    run.host->ProgressStart(Words(ePhrase::StageSkeleton).russian);
    EmptySlots(run);
    run.texts->mdlWriter->BlockBegin().Word("skeleton").EndLine();
    OpenStructure(run);
    WalkBones(run);
    CloseStructure(run);
    WriteModelMaterials(run);
    run.host->ProgressEnd();
    WriteAnimationBlock(run);
    run.texts->mdlWriter->BlockEndLine();
}
