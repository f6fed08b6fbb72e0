#include "export/common_resources.h"

#include "export/common_set.h"
#include "export/resource_set_writer.h"
#include "io/path.h"
#include "run/export.h"
#include "run/resource_sets.h"
#include "scene/current_model.h"
#include "scene/skeleton/mirrored_views.h"
#include "scene/skeleton/missing_meshes.h"

namespace {

bool LiesBelow(const host::INode& node, const host::INode* owner) {
    const host::INode* ancestor = node.GetParentNode();
    while (ancestor != nullptr && ancestor != owner) {
        ancestor = ancestor->GetParentNode();
    }
    return ancestor != nullptr;
}

// Goes on with the innermost set that waits, if any.
void ResumeCommonResources(Export& run) {
    if (run.waitingCommonSets.empty()) {
        return;
    }
    eWaitingCommonSet& set = run.waitingCommonSets.back();
    run.resources->commonOwner = set.owner;
    run.resources->commonFolder = set.folder;
    run.resources->commonResources = std::move(set.resources);
    run.model->sharedMeshes = std::move(set.sharedMeshes);
    run.resources->commonPending = true;
    run.waitingCommonSets.pop_back();
}

void CompleteCommonResources(Export& run) {
    if (run.options.exportMesh != 0) {
        WriteResourceSet(run, run.resources->commonResources, run.resources->commonFolder);
    }
    run.resources->commonPending = false;
    run.resources->commonOwner = nullptr;
    TellMirroredInstances(run);
    TellMissingMeshes(run);
    ResumeCommonResources(run);
}

// A model that stood alone between those of a set has left it waiting.
void EndStandingAlone(Export& run) {
    if (!run.resources->commonPending) {
        ResumeCommonResources(run);
    }
}

}  // namespace

void BeginCommonResources(Export& run) {
    SetCommonResourcesAside(run);
    run.resources->commonFolder = run.model->modelFolder / "common";
    run.resources->commonPrefix = "common/";
    run.resources->commonOwner = run.model->currentRoot;
    run.resources->commonPending = true;
    CreateFolders(run.resources->commonFolder);
}

void LeaveCommonResources(Export& run) {
    EndStandingAlone(run);
    while (run.resources->commonPending && !LiesBelow(*run.model->currentRoot, run.resources->commonOwner)) {
        CompleteCommonResources(run);
    }
}

void SetCommonResourcesAside(Export& run) {
    if (!run.resources->commonPending) {
        return;
    }
    run.waitingCommonSets.push_back({.owner = run.resources->commonOwner,
                                     .folder = run.resources->commonFolder,
                                     .resources = std::move(run.resources->commonResources),
                                     .sharedMeshes = std::move(run.model->sharedMeshes)});
    run.resources->commonResources = {};
    run.model->sharedMeshes = {};
    run.resources->commonOwner = nullptr;
    run.resources->commonPending = false;
}

void FlushCommonResources(Export& run) {
    EndStandingAlone(run);
    while (run.resources->commonPending) {
        CompleteCommonResources(run);
    }
}
