#include "scene/skeleton/mirrored_views.h"

#include "run/export.h"
#include "run/tell.h"
#include "scene/current_model.h"

bool IsMirroredAgainst(host::INode& node, host::INode& owner, host::TimeValue t) {
    return (node.GetNodeTM(t) * Inverse(owner.GetNodeTM(t))).Parity() != 0;
}

void TellMirroredView(Export& run, const host::INode& owner) {
    if (run.model->sharedMeshes.toldMirrored.insert(&owner).second) {
        TellOfNode(run, eMessageId::SharedMeshMirrored, owner);
    }
}

void TellMirroredInstances(Export& run) {
    if (run.host->GetCancel()) {
        return;
    }
    for (const eSharedView& view : run.model->sharedMeshes.views) {
        if (view.isInstance && run.model->sharedMeshes.IsWritten(*view.target) &&
            IsMirroredAgainst(*view.node, *view.target, run.StaticTime())) {
            TellMirroredView(run, *view.target);
        }
    }
}
