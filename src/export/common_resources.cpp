#include "export/common_resources.h"

#include "export/resource_set_writer.h"
#include "io/path.h"
#include "run/export.h"
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
    run.commonOwner = set.owner;
    run.commonFolder = set.folder;
    run.commonResources = std::move(set.resources);
    run.sharedMeshes = std::move(set.sharedMeshes);
    run.commonPending = true;
    run.waitingCommonSets.pop_back();
}

void CompleteCommonResources(Export& run) {
    if (run.options.exportMesh != 0) {
        WriteResourceSet(run.commonResources, run.commonFolder);
    }
    run.commonPending = false;
    run.commonOwner = nullptr;
    TellMirroredInstances(run);
    TellMissingMeshes(run);
    ResumeCommonResources(run);
}

// A model that stood alone between those of a set has left it waiting.
void EndStandingAlone(Export& run) {
    if (!run.commonPending) {
        ResumeCommonResources(run);
    }
}

}  // namespace

void BeginCommonResources(Export& run) {
    SetCommonResourcesAside(run);
    run.commonFolder = run.modelFolder / "common";
    run.commonPrefix = "common/";
    run.commonOwner = run.currentRoot;
    run.commonPending = true;
    CreateFolders(run.commonFolder);
}

void LeaveCommonResources(Export& run) {
    EndStandingAlone(run);
    while (run.commonPending && !LiesBelow(*run.currentRoot, run.commonOwner)) {
        CompleteCommonResources(run);
    }
}

void SetCommonResourcesAside(Export& run) {
    if (!run.commonPending) {
        return;
    }
    run.waitingCommonSets.push_back({.owner = run.commonOwner,
                                     .folder = run.commonFolder,
                                     .resources = std::move(run.commonResources),
                                     .sharedMeshes = std::move(run.sharedMeshes)});
    run.commonResources = {};
    run.sharedMeshes = {};
    run.commonOwner = nullptr;
    run.commonPending = false;
}

void FlushCommonResources(Export& run) {
    EndStandingAlone(run);
    while (run.commonPending) {
        CompleteCommonResources(run);
    }
}
