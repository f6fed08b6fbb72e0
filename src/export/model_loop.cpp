#include "export/model_loop.h"

#include "animation/animation_table.h"
#include "export/common_resources.h"
#include "export/model_blocks.h"
#include "export/model_files.h"
#include "export/model_folders.h"
#include "export/resource_set_writer.h"
#include "export/skeleton_block.h"
#include "material/run_materials.h"
#include "run/export.h"
#include "run/resource_sets.h"
#include "scene/bones/bone_tree.h"
#include "scene/current_model.h"
#include "scene/properties/node_properties.h"
#include "scene/run_journal.h"
#include "scene/scene_as_read.h"

namespace {

// A Structure begins a common set of its own; those that it is not nested in are complete.
void BeginModel(Export& run) {
    run.model->currentRoot = run.scene->models[run.model->modelIndex].root;
    run.model->structureMode = HasUserProp(*run.model->currentRoot, "Structure");
    if (run.model->structureMode) {
        LeaveCommonResources(run);
    }
}

// False if a fault has been told that leaves the model out.
bool NumberBones(Export& run) {
    ForgetBoneNumbers(run);
    run.model->boneCount = 0;
    run.model->boneNames.clear();
    return !CollectBones(run, *run.model->currentRoot, run.model->boneCount, false);
}

void ClearModel(Export& run) {
    run.materials->materialMap.clear();
    run.model->meshCounter = 0;
    run.model->supportPoints.clear();
    run.model->landPatch = false;
}

void BeginReport(Export& run) {
    eModelReport& report = run.modelReports[run.model->modelIndex];
    report.folder = run.model->modelFolder;
    report.bones = run.model->boneCount;
}

void ExportModel(Export& run) {
    BeginModel(run);
    if (!NumberBones(run)) {
        NoteLeftOut(run, *run.model->currentRoot, eLeftOut::ModelRefused);
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
    if (!run.model->structureMode && run.options.exportMesh != 0) {
        WriteResourceSet(run, run.resources->modelResources, run.model->modelFolder);
    }
    run.modelReports[run.model->modelIndex].skipped = false;
}

}  // namespace

void ExportModels(Export& run) {
    for (run.model->modelIndex = 0; run.model->modelIndex < run.scene->models.size();
         ++run.model->modelIndex) {
        ExportModel(run);
        if (run.host->GetCancel()) {
            break;
        }
    }
}
