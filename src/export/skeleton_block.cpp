#include "export/skeleton_block.h"

#include "animation/animation_table.h"
#include "base/ansi.h"
#include "export/export.h"
#include "export/mesh_stage_driver.h"
#include "material/write_materials.h"
#include "scene/skeleton/bone_writer.h"
#include "scene/skeleton/mirrored_views.h"
#include "scene/skeleton/missing_meshes.h"

namespace {

// A frame that no animation holds needs no entries: a short animation may lie far out on the timeline.
void EmptyFrames(Export& run, int highestFrame) {
    run.frames.clear();
    if (run.options.exportAnimation == 0) {
        return;
    }
    run.frames.resize(static_cast<std::size_t>(highestFrame) + 1);
    for (const eExportAnimation& animation : run.animations) {
        for (int frame = animation.firstFrame; animation.inRange && frame <= animation.lastFrame; ++frame) {
            run.frames[static_cast<std::size_t>(frame)].bones.resize(static_cast<std::size_t>(run.boneCount));
        }
    }
}

void EmptySlots(Export& run, int highestFrame) {
    run.bones.clear();
    run.bones.resize(static_cast<std::size_t>(run.boneCount));
    EmptyFrames(run, highestFrame);
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

void WriteSkeletonBlock(Export& run, int highestFrame) {
    run.host->ProgressStart("Трансформация мэшей, подготовка анимации..."_ansi);
    EmptySlots(run, highestFrame);
    run.mdlWriter->BlockBegin().Word("skeleton").EndLine();
    OpenStructure(run);
    WalkBones(run);
    CloseStructure(run);
    WriteModelMaterials(run);
    run.host->ProgressEnd();
    WriteAnimationBlock(run);
    run.mdlWriter->BlockEndLine();
}
