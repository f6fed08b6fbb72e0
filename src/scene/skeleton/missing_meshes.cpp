#include "scene/skeleton/missing_meshes.h"

#include <algorithm>
#include <string>

#include "messages/phrase.h"
#include "run/export.h"
#include "run/run_flags.h"
#include "run/tell.h"
#include "scene/bones/skeleton_absence.h"
#include "scene/current_model.h"
#include "scene/properties/node_kind.h"
#include "scene/properties/node_properties.h"

namespace {

bool HasValue(const host::INode& node, const char* key) {
    std::string value;
    return node.GetUserPropString(key, value) && !value.empty();
}

bool IsView(const eSharedMeshes& meshes, const host::INode& node) {
    const auto isItsView = [&](const eSharedView& view) {
        return view.node == &node && view.target != &node;
    };
    return HasValue(node, "Mesh") || std::ranges::any_of(meshes.views, isItsView);
}

// Why a mesh that the walk has not come to, or has passed, is not in the file.
eBilingual WhyNotWritten(const eSharedMeshes& meshes, host::INode& target) {
    if (eBilingual hidden = WhyHidden(target); !hidden.IsEmpty()) {
        return hidden;
    }
    if (ClassifyNode(target) != eNodeKind::Ordinary || target.IsGroupMember()) {
        return Words(ePhrase::BoneIsNoBone);
    }
    if (!target.Renderable()) {
        return Words(ePhrase::MeshNotRenderable);
    }
    if (!HasUserProp(target, "Poly") && !host::HasUserPropString(target, "CommonMesh")) {
        return Words(ePhrase::MeshWithoutPoly);
    }
    if (exportSelected && !target.Selected()) {
        return Words(ePhrase::MeshNotSelected);
    }
    if (HasValue(target, "CommonMesh")) {
        return Words(ePhrase::MeshFeedsAnother);
    }
    if (IsView(meshes, target)) {
        return Words(ePhrase::MeshShowsAnother);
    }
    if (IsShape(target)) {
        return Words(ePhrase::MeshOfLines);
    }
    return Words(ePhrase::MeshNotReached);
}

eBilingual ReasonOf(const eSharedMeshes& meshes, host::INode& target) {
    const auto fate = meshes.fates.find(&target);
    if (fate == meshes.fates.end()) {
        return WhyNotWritten(meshes, target);
    }
    switch (fate->second) {
        case eMeshFate::Empty:
            return Words(ePhrase::MeshEmpty);
        case eMeshFate::Refused:
            return Words(ePhrase::MeshRefused);
        default:
            return Words(ePhrase::MeshElsewhere);
    }
}

void TellLostViews(Export& run, const eSharedMeshes& meshes) {
    for (const eSharedView& view : meshes.views) {
        if (!meshes.IsWritten(*view.target)) {
            Tell(run, eMessageId::SharedMeshNotWritten, {.node = host::PathOf(*view.node)},
                 view.node->GetName(), view.target->GetName(), ReasonOf(meshes, *view.target));
        }
    }
}

// A mesh that was to be written and had to be refused has been told as such.
void TellLostFeeds(Export& run, const eSharedMeshes& meshes) {
    for (const eMeshFeed& feed : meshes.feeds) {
        if (!meshes.fates.contains(feed.target)) {
            Tell(run, eMessageId::SharedMeshFeedLost, {.node = host::PathOf(*feed.node)},
                 feed.node->GetName(), feed.target->GetName(), WhyNotWritten(meshes, *feed.target));
        }
    }
}

}  // namespace

void TellMissingMeshes(Export& run) {
    const eSharedMeshes meshes = std::move(run.model->sharedMeshes);
    run.model->sharedMeshes = {};
    if (run.host->GetCancel()) {
        return;
    }
    TellLostViews(run, meshes);
    TellLostFeeds(run, meshes);
}
