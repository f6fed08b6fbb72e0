#include "scene/bones/lod_nodes.h"

#include <algorithm>
#include <string>

#include "run/export.h"
#include "scene/properties/node_kind.h"
#include "scene/properties/node_name.h"
#include "scene/scene_as_read.h"

namespace {

eLodSiblings ReadSiblings(const host::INode& parent) {
    constexpr std::string_view kMark = "_lod";
    eLodSiblings siblings;
    for (int i = parent.NumberOfChildren() - 1; i >= 0; --i) {
        host::INode* const child = parent.GetChildNode(i);
        const std::string name = CleanNodeName(child->GetName(), true);
        for (std::size_t mark = name.find(kMark); mark != std::string::npos;
             mark = name.find(kMark, mark + 1)) {
            siblings[name.substr(0, mark)].push_back(child);
        }
    }
    return siblings;
}

const eLodSiblings& SiblingsBelow(Export& run, const host::INode& parent) {
    const auto found = run.scene->lodIndex.find(&parent);
    return found != run.scene->lodIndex.end()
               ? found->second
               : run.scene->lodIndex.emplace(&parent, ReadSiblings(parent)).first->second;
}

bool IsDetailLevel(host::INode& node) {
    return (!node.IsGroupMember() || node.IsGroupHead()) && !node.IsNodeHidden() &&
           ClassifyNode(node) == eNodeKind::Ordinary;
}

}  // namespace

int FindLodNodes(Export& run, const host::INode& node, std::vector<host::INode*>& details) {
    details.clear();
    if (node.GetParentNode() == nullptr) {
        return 0;
    }
    const eLodSiblings& siblings = SiblingsBelow(run, *node.GetParentNode());
    if (siblings.empty()) {
        return 0;
    }
    const auto found = siblings.find(CleanNodeName(node.GetName(), true));
    if (found != siblings.end()) {
        std::ranges::copy_if(found->second, std::back_inserter(details),
                             [](host::INode* sibling) { return IsDetailLevel(*sibling); });
        std::ranges::stable_sort(details, {}, [](host::INode* detail) { return GetLodLevel(*detail); });
    }
    return static_cast<int>(details.size());
}
