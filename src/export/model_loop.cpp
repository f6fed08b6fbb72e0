#include "export/model_loop.h"

#include "animation/animation_table.h"
#include "export/common_resources.h"
#include "export/model_blocks.h"
#include "export/model_files.h"
#include "export/model_folders.h"
#include "export/resource_set_writer.h"
#include "export/skeleton_block.h"
#include "run/export.h"
#include "scene/bones/bone_tree.h"
#include "scene/properties/node_properties.h"

namespace {

// A Structure begins a common set of its own; those that it is not nested in are complete.
void BeginModel(Export& run) {
    run.currentRoot = run.models[run.modelIndex].root;
    run.structureMode = HasUserProp(*run.currentRoot, "Structure");
    if (run.structureMode) {
        LeaveCommonResources(run);
    }
}

// False if a fault has been told that leaves the model out.
bool NumberBones(Export& run) {
    ForgetBoneNumbers(run);
    run.boneCount = 0;
    run.boneNames.clear();
    return !CollectBones(run, *run.currentRoot, run.boneCount, false);
}

void ClearModel(Export& run) {
    run.materialMap.clear();
    run.meshCounter = 0;
    run.supportPoints.clear();
    run.landPatch = false;
}

void BeginReport(Export& run) {
    eModelReport& report = run.modelReports[run.modelIndex];
    report.folder = run.modelFolder;
    report.bones = run.boneCount;
}

void ExportModel(Export& run) {
    BeginModel(run);
    if (!NumberBones(run)) {
        return;
    }
    ClearModel(run);
    if (!SettleFolders(run)) {
        return;
    }
    BeginReport(run);

    eModelFiles files(run);
    files.OpenModelText();
    files.OpenEntityDefinition();
    ReadAnimations(run);
    files.OpenAnimationList();
    WriteSkeletonBlock(run);
    WriteModelBlocks(run);
    files.CloseTexts();
    files.WriteAnimations();
    if (!run.structureMode && run.options.exportMesh != 0) {
        WriteResourceSet(run.modelResources, run.modelFolder);
    }
    run.modelReports[run.modelIndex].skipped = false;
}

}  // namespace

void ExportModels(Export& run) {
    for (run.modelIndex = 0; run.modelIndex < run.models.size(); ++run.modelIndex) {
        ExportModel(run);
        if (run.host->GetCancel()) {
            break;
        }
    }
}
