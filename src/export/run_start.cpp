#include "export/run_start.h"

#include "animation/model_motion.h"
#include "export/common_set.h"
#include "export/dialog_logic.h"
#include "export/options_file.h"
#include "material/run_materials.h"
#include "run/export.h"
#include "run/resource_sets.h"
#include "run/run_flags.h"
#include "scene/bones/bone_tree.h"
#include "scene/current_model.h"
#include "scene/scene_as_read.h"

namespace {

// Panels of the host: the one for the time of the export shows no parameters of the selection.
constexpr int kExportTaskMode = 6;
constexpr int kModifyTaskMode = 2;

eExportOptions SilentOptions() {
    eExportOptions options;
    options.optionD = 0;
    return options;
}

}  // namespace

void BeginRun(Export& run, host::Interface* hostInterface, bool suppressPrompts, std::uint32_t optionsWord) {
    showDialog = !suppressPrompts;
    exportSelected = (optionsWord & kExportSelectedOption) != 0;
    run.host = hostInterface;
    run.host->SetCommandPanelTaskMode(kExportTaskMode);
    const host::Interval range = run.host->GetAnimRange();
    run.frameStart = range.start / run.host->GetTicksPerFrame();
    run.frameEnd = range.end / run.host->GetTicksPerFrame();
}

bool SettleOptions(Export& run) {
    LoadOptions(run);
    if (!showDialog) {
        run.options = SilentOptions();
        return true;
    }
    return (!run.optionsDialog || run.optionsDialog(run)) &&
           CheckOptionPaths(run.options, run.host->GetMAXHWnd());
}

void ClearRun(Export& run) {
    ForgetScene(run);
    run.modelReports.clear();
    run.mirrorMatrix = host::Inverse(host::ScaleMatrix({1, -1, 1}));
    run.model->structureMode = false;
    run.resources->commonFolder = {};
    run.resources->commonPrefix = {};
    run.resources->commonPending = false;
}

void ForgetScene(Export& run) {
    ForgetBoneNumbers(run);
    run.scene->models.clear();
    run.scene->sceneLights.clear();
    run.scene->lodIndex.clear();
    run.scene->instances = {};
    run.scene->meshViews.reset();
    run.motion->selectionMembers.clear();
    run.model->sharedMeshes = {};
    run.waitingCommonSets.clear();
    run.materials->materialMap.clear();
    run.materials->textureClaims.clear();
    run.resources->commonOwner = nullptr;
}

void EndRun(Export& run) {
    run.host->SetCommandPanelTaskMode(kModifyTaskMode);
}
