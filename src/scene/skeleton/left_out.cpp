#include "scene/skeleton/left_out.h"

#include <string>

#include "base/ansi.h"
#include "base/format.h"
#include "base/user_message.h"
#include "run/export.h"
#include "scene/current_model.h"
#include "scene/properties/node_kind.h"
#include "scene/properties/node_properties.h"

namespace {

// What a node is for the game beside the skeleton, as the artist calls it; null for what is not missed.
const char* WordOf(eNodeKind kind) {
    switch (kind) {
        case eNodeKind::Volume:
            return "объем"_ansi;
        case eNodeKind::SupportPoint:
            return "точка опоры"_ansi;
        case eNodeKind::Zone:
            return "зона"_ansi;
        case eNodeKind::Preview:
            return "просмотровая группа"_ansi;
        default:
            return nullptr;
    }
}

void AddItem(std::string& items, const std::string& what, const host::INode& node) {
    items += (items.empty() ? "" : ", ") + what + " '" + node.GetName() + "'";
}

// The walk that the node has stopped. Hidden branches below it would be left out without it as well.
void ListItems(const Export& run, host::INode& node, std::string& items) {
    if (HasUserProp(node, "Land")) {
        AddItem(items, "'Land' узла"_ansi, node);
    }
    const eNodeKind kind = ClassifyNode(node);
    if (const char* word = WordOf(kind)) {
        AddItem(items, word, node);
    }
    for (int i = 0; kind == eNodeKind::Ordinary && i < node.NumberOfChildren(); ++i) {
        host::INode& child = *node.GetChildNode(i);
        const bool isHiddenBranch = child.IsNodeHidden() && ClassifyNode(child) == eNodeKind::Ordinary;
        const bool isOtherModel = run.model->structureMode && HasUserProp(child, "Model");
        if (!isHiddenBranch && !isOtherModel) {
            ListItems(run, child, items);
        }
    }
}

}  // namespace

void TellLeftOut(Export& run, host::INode& hidden) {
    std::string items;
    ListItems(run, hidden, items);
    if (!items.empty()) {
        const auto text =
            format("Узел '%s' скрыт, и вместе с ним не записано: %s.\nНеобходимо показать этот узел."_ansi) %
            hidden.GetName() % items;
        ShowWarning(run.host->GetMAXHWnd(), text.Text());
    }
}
