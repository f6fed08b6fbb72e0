#include "scene/bones/find_instance.h"

#include "export/export.h"

namespace {

void AddUses(eInstanceMap& instances, host::INode& node) {
    if (node.IsGroupMember()) {
        return;
    }
    if (const host::Object* object = node.EvalWorldState(0).obj; object != nullptr) {
        eInstanceMap::eUse& use = instances.uses[object];
        use.isShared = use.first != nullptr;
        use.first = use.first != nullptr ? use.first : &node;
    }
    for (int i = 0; i < node.NumberOfChildren(); ++i) {
        AddUses(instances, *node.GetChildNode(i));
    }
}

}  // namespace

host::INode* FindInstance(Export& run, const host::Object* object, host::INode& root) {
    eInstanceMap& instances = run.instances;
    if (instances.root != &root) {
        instances = {};
        instances.root = &root;
        AddUses(instances, root);
    }
    const auto found = instances.uses.find(object);
    return found != instances.uses.end() && found->second.isShared ? found->second.first : nullptr;
}
