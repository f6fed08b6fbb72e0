#include "export/skeleton_block.h"

#include "animation/animation_table.h"
#include "base/ansi.h"
#include "export/mesh_stage_driver.h"
#include "material/write_materials.h"
#include "run/export.h"
#include "scene/skeleton/bone_writer.h"
#include "scene/skeleton/mirrored_views.h"
#include "scene/skeleton/missing_meshes.h"

namespace {

void EmptySlots(Export& run) {
    run.bones.clear();
    run.bones.resize(static_cast<std::size_t>(run.boneCount));
    run.frames = {};
    if (run.options.exportAnimation != 0) {
        run.frames = eFrameTable(run.animations, run.boneCount);
    }
}

void OpenStructure(Export& run) {
    if (run.structureMode) {
        run.defWriter->BlockBegin().String("placer").BlockEndLine();
        run.defWriter->BlockBegin().String("structure").EndLine();
    }
}

void CloseStructure(Export& run) {
    if (run.structureMode) {
        run.defWriter->BlockEndLine();
    }
}

// The mesh stage may change the scene; the hold takes that back. A walk that stops has told why, and what it
// has written so far counts.
void WalkBones(Export& run) {
    eMeshStageDriver meshStage;
    run.host->theHold().Begin();
    WriteBone(run, meshStage, *run.currentRoot, nullptr, DetailEntry | RootBone);
    run.host->theHold().Cancel();
    if (!run.commonPending) {
        TellMirroredInstances(run);
        TellMissingMeshes(run);
    }
}

void WriteModelMaterials(Export& run) {
    if (run.options.exportMesh == 0) {
        return;
    }
    const eExportResourceSet& set = run.commonPending ? run.commonResources : run.modelResources;
    const std::size_t before = set.materials.size();
    WriteMaterials(run, run.commonPending);
    run.modelReports[run.modelIndex].materials = static_cast<int>(set.materials.size() - before);
}

}  // namespace

void WriteSkeletonBlock(Export& run) {
    run.host->ProgressStart("Трансформация мэшей, подготовка анимации..."_ansi);
    EmptySlots(run);
    run.mdlWriter->BlockBegin().Word("skeleton").EndLine();
    OpenStructure(run);
    WalkBones(run);
    CloseStructure(run);
    WriteModelMaterials(run);
    run.host->ProgressEnd();
    WriteAnimationBlock(run);
    run.mdlWriter->BlockEndLine();
}
