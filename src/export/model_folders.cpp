#include "export/model_folders.h"

#include <string>

#include "export/common_resources.h"
#include "io/path.h"
#include "platform/drive_table.h"
#include "platform/write_fence.h"
#include "run/export.h"
#include "run/resource_sets.h"
#include "run/tell.h"
#include "scene/bones/nested_structure.h"
#include "scene/current_model.h"
#include "scene/properties/node_name.h"
#include "scene/run_journal.h"

namespace {

void TellOfPath(Export& run, eMessageId id, const std::string& path) {
    const host::INode& root = *run.model->currentRoot;
    Tell(run, id, {.node = host::PathOf(root), .property = "Model"}, root.GetName(), path);
}

// A path with a drive leads nowhere behind the resource root.
bool IsFromTheRoot(Export& run, const std::string& model) {
    if (!platform::HasDrive(model)) {
        return true;
    }
    TellOfPath(run, eMessageId::ModelsFullPath, model);
    return false;
}

bool IsInsideFence(Export& run) {
    if (platform::IsWriteAllowed(run.model->modelFolder.Text())) {
        return true;
    }
    TellOfPath(run, eMessageId::ModelsOutsideRoot, run.model->modelFolder.Text());
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

std::optional<eName> FolderOfModel(const Export& run, const host::INode& root) {
    std::string model;
    if (!root.GetUserPropString("Model", model)) {
        return std::nullopt;
    }
    return run.options.resourceRoot / CleanNodeName(model, false);
}

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
    run.model->modelFolder = *FolderOfModel(run, *run.model->currentRoot);
    run.model->basePath = run.model->modelFolder / run.model->modelFolder.Part(eName::Title);
    if (!IsInsideFence(run)) {
        NoteLeftOut(run, *run.model->currentRoot, eLeftOut::ModelRefused);
        return false;
    }
    CreateFolders(run.model->modelFolder);
    SettleCommonFolder(run);
    return true;
}
