#include "export/model_folders.h"

#include <string>

#include "base/ansi.h"
#include "base/format.h"
#include "base/user_message.h"
#include "export/common_resources.h"
#include "io/path.h"
#include "platform/drive_table.h"
#include "platform/write_fence.h"
#include "run/export.h"
#include "run/resource_sets.h"
#include "scene/bones/nested_structure.h"
#include "scene/current_model.h"
#include "scene/properties/node_name.h"
#include "scene/run_journal.h"

namespace {

// A path with a drive leads nowhere behind the resource root.
bool IsFromTheRoot(Export& run, const std::string& model) {
    if (!platform::HasDrive(model)) {
        return true;
    }
    ShowError(run.host->GetMAXHWnd(),
              (format("Кость '%s': в параметре 'Model' указан полный путь '%s'.\n"
                      "Нужен путь от каталога ресурсов игры. Модель пропущена."_ansi) %
               run.model->currentRoot->GetName() % model)
                  .Text());
    return false;
}

bool IsInsideFence(Export& run) {
    if (platform::IsWriteAllowed(run.model->modelFolder.Text())) {
        return true;
    }
    ShowError(run.host->GetMAXHWnd(),
              (format("Кость '%s': путь '%s' из параметра 'Model' ведет за пределы каталога ресурсов.\n"
                      "Модель пропущена."_ansi) %
               run.model->currentRoot->GetName() % run.model->modelFolder.Text())
                  .Text());
    return false;
}

// A model is nested in the Structure nearest to it; if that one was left out, the model stands alone.
void SettleCommonFolder(Export& run) {
    if (run.model->structureMode) {
        BeginCommonResources(run);
        return;
    }
    LeaveCommonResources(run);
    if (run.resources->commonPending &&
        EnclosingStructure(*run.model->currentRoot) == run.resources->commonOwner) {
        run.resources->commonPrefix = "../common/";
    } else {
        SetCommonResourcesAside(run);
        run.resources->commonFolder = run.model->modelFolder;
        run.resources->commonPrefix = {};
    }
}

}  // namespace

bool SettleFolders(Export& run) {
    std::string model;
    if (!run.model->currentRoot->GetUserPropString("Model", model)) {
        NoteLeftOut(run, *run.model->currentRoot, eLeftOut::NoModel);
        return false;
    }
    if (!IsFromTheRoot(run, model)) {
        NoteLeftOut(run, *run.model->currentRoot, eLeftOut::ModelRefused);
        return false;
    }
    run.model->modelFolder = run.options.resourceRoot / CleanNodeName(model, false);
    run.model->basePath = run.model->modelFolder / run.model->modelFolder.Part(eName::Title);
    if (!IsInsideFence(run)) {
        NoteLeftOut(run, *run.model->currentRoot, eLeftOut::ModelRefused);
        return false;
    }
    CreateFolders(run.model->modelFolder);
    SettleCommonFolder(run);
    return true;
}
