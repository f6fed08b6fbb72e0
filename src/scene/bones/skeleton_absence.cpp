#include "scene/bones/skeleton_absence.h"

#include "base/ansi.h"
#include "base/format.h"
#include "run/export.h"
#include "scene/bones/bone_tree.h"
#include "scene/current_model.h"
#include "scene/properties/node_name.h"
#include "scene/properties/node_properties.h"

namespace {

// A model that is nested in a Structure has a skeleton of its own.
bool IsInCurrentModel(const Export& run, host::INode& node) {
    host::INode* current = &node;
    while (current != nullptr && current != run.model->currentRoot) {
        if (run.model->structureMode && HasUserProp(*current, "Model")) {
            return false;
        }
        current = current->GetParentNode();
    }
    return current != nullptr;
}

}  // namespace

std::string WhyOutsideSkeleton(Export& run, host::INode& node) {
    const bool isDetail = GetLodLevel(node) != 0;
    if (NodeIndex(node, &node) >= 0 && !isDetail) {
        return {};
    }
    if (!IsInCurrentModel(run, node)) {
        return (format("она находится вне модели '%s'"_ansi) % run.model->currentRoot->GetName()).Text();
    }
    const host::INode& bone = OutOfGroup(node);
    if (std::string hidden = WhyHidden(bone); !hidden.empty()) {
        return hidden;
    }
    if (&bone != &node) {
        return (format("она входит в группу '%s'"_ansi) % bone.GetName()).Text();
    }
    return isDetail ? "она является уровнем детализации"_ansi : "она не является отдельной костью"_ansi;
}

std::string WhyHidden(const host::INode& node) {
    const host::INode* current = &node;
    while (current != nullptr && !current->IsNodeHidden()) {
        current = current->GetParentNode();
    }
    return current != nullptr ? (format("кость '%s' скрыта"_ansi) % current->GetName()).Text()
                              : std::string();
}
