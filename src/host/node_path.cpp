#include "host/node_path.h"

namespace host {

std::string PathOf(const INode& node) {
    const INode* const parent = node.GetParentNode();
    if (parent == nullptr) {
        return {};
    }
    const std::string above = PathOf(*parent);
    return above.empty() ? node.GetName() : above + "/" + node.GetName();
}

}  // namespace host
