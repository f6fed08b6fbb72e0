#include "scene/skeleton/left_out.h"

#include <optional>

#include "messages/phrase.h"
#include "run/export.h"
#include "run/tell.h"
#include "scene/current_model.h"
#include "scene/properties/node_kind.h"
#include "scene/properties/node_properties.h"

namespace {

// What a node is for the game beside the skeleton, as the artist calls it; nothing for what is not missed.
std::optional<ePhrase> PhraseOf(eNodeKind kind) {
    switch (kind) {
        case eNodeKind::Volume:
            return ePhrase::ItemVolume;
        case eNodeKind::SupportPoint:
            return ePhrase::ItemSupportPoint;
        case eNodeKind::Zone:
            return ePhrase::ItemZone;
        case eNodeKind::Preview:
            return ePhrase::ItemPreview;
        default:
            return std::nullopt;
    }
}

// The walk that the node has stopped. Hidden branches below it would be left out without it as well.
void ListItems(const Export& run, host::INode& node, eBilingual& items) {
    if (HasUserProp(node, "Land")) {
        items.AddToList(Words(ePhrase::ItemLand, node.GetName()));
    }
    const eNodeKind kind = ClassifyNode(node);
    if (const std::optional<ePhrase> phrase = PhraseOf(kind)) {
        items.AddToList(Words(*phrase, node.GetName()));
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
    eBilingual items;
    ListItems(run, hidden, items);
    if (!items.IsEmpty()) {
        Tell(run, eMessageId::NodesHiddenContent, {.node = host::PathOf(hidden)}, hidden.GetName(), items);
    }
}
