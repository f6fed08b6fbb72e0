#include "scene/bones/skeleton_absence.h"

#include "messages/phrase.h"
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

eBilingual WhyOutsideSkeleton(Export& run, host::INode& node) {
    const bool isDetail = GetLodLevel(node) != 0;
    if (NodeIndex(node, &node) >= 0 && !isDetail) {
        return {};
    }
    if (!IsInCurrentModel(run, node)) {
        return Words(ePhrase::BoneOutsideModel, run.model->currentRoot->GetName());
    }
    const host::INode& bone = OutOfGroup(node);
    if (eBilingual hidden = WhyHidden(bone); !hidden.IsEmpty()) {
        return hidden;
    }
    if (&bone != &node) {
        return Words(ePhrase::BoneInGroup, bone.GetName());
    }
    return Words(isDetail ? ePhrase::BoneIsDetailLevel : ePhrase::BoneIsNoBone);
}

eBilingual WhyHidden(const host::INode& node) {
    const host::INode* current = &node;
    while (current != nullptr && !current->IsNodeHidden()) {
        current = current->GetParentNode();
    }
    return current != nullptr ? Words(ePhrase::BoneHidden, current->GetName()) : eBilingual();
}
