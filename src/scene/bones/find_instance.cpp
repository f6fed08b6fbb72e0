#include "scene/bones/find_instance.h"

#include "run/export.h"
#include "run/resource_sets.h"
#include "scene/bones/nested_structure.h"
#include "scene/properties/node_properties.h"
#include "scene/scene_as_read.h"

namespace {

// `inStructure`: the node belongs to a Structure, not to a model nested in it.
void AddUses(eInstanceMap& instances, host::INode& node, bool inStructure) {
    if (node.IsGroupMember()) {
        return;
    }
    if (const host::Object* object = node.EvalWorldState(0).obj; object != nullptr) {
        eInstanceMap::eUse& use = instances.uses[object];
        use.isShared = use.first != nullptr;
        use.first = use.first != nullptr ? use.first : &node;
    }
    for (int i = 0; i < node.NumberOfChildren(); ++i) {
        host::INode& child = *node.GetChildNode(i);
        if (!inStructure || !IsStructure(child)) {
            AddUses(instances, child, inStructure && !HasUserProp(child, "Model"));
        }
    }
}

}  // namespace

host::INode* FindInstance(Export& run, const host::Object* object, host::INode& root) {
    eInstanceMap& instances = run.scene->instances;
    if (instances.root != &root) {
        instances = {};
        instances.root = &root;
        AddUses(instances, root, run.resources->commonOwner == &root);
    }
    const auto found = instances.uses.find(object);
    return found != instances.uses.end() && found->second.isShared ? found->second.first : nullptr;
}
