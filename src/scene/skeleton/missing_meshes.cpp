#include "scene/skeleton/missing_meshes.h"

#include <string>

#include "base/ansi.h"
#include "base/format.h"
#include "base/user_message.h"
#include "export/export.h"
#include "scene/properties/node_kind.h"
#include "scene/properties/node_properties.h"

namespace {

const host::INode* HiddenAtOrAbove(const host::INode& node) {
    for (const host::INode* current = &node; current != nullptr; current = current->GetParentNode()) {
        if (current->IsNodeHidden()) {
            return current;
        }
    }
    return nullptr;
}

bool HasValue(const host::INode& node, const char* key) {
    std::string value;
    return node.GetUserPropString(key, value) && !value.empty();
}

// Why a mesh that the walk has not come to, or has passed, is not in the file.
std::string WhyNotWritten(host::INode& target) {
    if (const host::INode* hidden = HiddenAtOrAbove(target)) {
        return (format("кость '%s' скрыта"_ansi) % hidden->GetName()).Text();
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
    if (HasValue(target, "Mesh") || HasValue(target, "CommonMesh")) {
        return "она сама показывает мэш другой кости"_ansi;
    }
    return "обход модели до нее не дошел"_ansi;
}

std::string ReasonOf(const eSharedMeshes& meshes, host::INode& target) {
    const auto fate = meshes.fates.find(&target);
    if (fate == meshes.fates.end()) {
        return WhyNotWritten(target);
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

}  // namespace

void TellMissingMeshes(Export& run) {
    const eSharedMeshes meshes = std::move(run.sharedMeshes);
    run.sharedMeshes = {};
    if (run.host->GetCancel()) {
        return;
    }
    for (const eSharedView& view : meshes.views) {
        if (!meshes.IsWritten(*view.target)) {
            ShowError(run.host->GetMAXHWnd(),
                      (format("Кость '%s' показывает мэш кости '%s', но этот мэш не записан: %s."_ansi) %
                       view.node->GetName() % view.target->GetName() % ReasonOf(meshes, *view.target))
                          .Text());
        }
    }
}
