#include "scene/skeleton/missing_meshes.h"

#include <algorithm>
#include <string>

#include "base/ansi.h"
#include "base/format.h"
#include "base/user_message.h"
#include "run/export.h"
#include "run/run_flags.h"
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
std::string WhyNotWritten(const eSharedMeshes& meshes, host::INode& target) {
    if (std::string hidden = WhyHidden(target); !hidden.empty()) {
        return hidden;
    }
    if (ClassifyNode(target) != eNodeKind::Ordinary || target.IsGroupMember()) {
        return "она не является отдельной костью"_ansi;
    }
    if (!target.Renderable()) {
        return "она исключена из визуализации"_ansi;
    }
    if (!HasUserProp(target, "Poly") && !host::HasUserPropString(target, "CommonMesh")) {
        return "у нее нет параметра 'Poly'"_ansi;
    }
    if (exportSelected && !target.Selected()) {
        return "она не выделена"_ansi;
    }
    if (HasValue(target, "CommonMesh")) {
        return "она сама входит в общий мэш другой кости"_ansi;
    }
    if (IsView(meshes, target)) {
        return "она сама показывает мэш другой кости"_ansi;
    }
    if (IsShape(target)) {
        return "она состоит из линий"_ansi;
    }
    return "обход модели до нее не дошел"_ansi;
}

std::string ReasonOf(const eSharedMeshes& meshes, host::INode& target) {
    const auto fate = meshes.fates.find(&target);
    if (fate == meshes.fates.end()) {
        return WhyNotWritten(meshes, target);
    }
    switch (fate->second) {
        case eMeshFate::Empty:
            return "в нем нет ни одного полигона"_ansi;
        case eMeshFate::Refused:
            return "причина указана выше"_ansi;
        default:
            return "он записан в папку своей модели, а не в общую"_ansi;
    }
}

void TellLostViews(Export& run, const eSharedMeshes& meshes) {
    for (const eSharedView& view : meshes.views) {
        if (!meshes.IsWritten(*view.target)) {
            ShowError(run.host->GetMAXHWnd(),
                      (format("Кость '%s' показывает мэш кости '%s', но этот мэш не записан: %s."_ansi) %
                       view.node->GetName() % view.target->GetName() % ReasonOf(meshes, *view.target))
                          .Text());
        }
    }
}

// A mesh that was to be written and had to be refused has been told as such.
void TellLostFeeds(Export& run, const eSharedMeshes& meshes) {
    for (const eMeshFeed& feed : meshes.feeds) {
        if (!meshes.fates.contains(feed.target)) {
            const auto text =
                format("Мэш '%s' не попал в общий мэш кости '%s', потому что тот не записан: %s."_ansi) %
                feed.node->GetName() % feed.target->GetName() % WhyNotWritten(meshes, *feed.target);
            ShowError(run.host->GetMAXHWnd(), text.Text());
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
