#include "scene/bones/nested_structure.h"

#include "host/node.h"
#include "scene/properties/node_properties.h"

bool IsStructure(const host::INode& node) {
    return host::HasUserPropString(node, "Model") && HasUserProp(node, "Structure");
}

const host::INode* EnclosingStructure(const host::INode& node) {
    const host::INode* above = node.GetParentNode();
    while (above != nullptr && !IsStructure(*above)) {
        above = above->GetParentNode();
    }
    return above;
}
