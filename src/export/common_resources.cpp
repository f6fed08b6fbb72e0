#include "export/common_resources.h"

#include "export/export.h"
#include "export/resource_set_writer.h"
#include "io/path.h"
#include "scene/skeleton/missing_meshes.h"

void BeginCommonResources(Export& run) {
    run.commonFolder = run.modelFolder / "common";
    run.commonPrefix = "common/";
    run.commonOwner = run.currentRoot;
    run.commonPending = true;
    CreateFolders(run.commonFolder);
}

bool IsNestedInCommonOwner(const Export& run) {
    if (!run.commonPending) {
        return false;
    }
    const host::INode* ancestor = run.currentRoot->GetParentNode();
    while (ancestor != nullptr && ancestor != run.commonOwner) {
        ancestor = ancestor->GetParentNode();
    }
    return ancestor != nullptr;
}

void FlushCommonResources(Export& run) {
    if (!run.commonPending) {
        return;
    }
    if (run.options.exportMesh != 0) {
        WriteResourceSet(run.commonResources, run.commonFolder);
    }
    run.commonPending = false;
    run.commonOwner = nullptr;
    TellMissingMeshes(run);
}
