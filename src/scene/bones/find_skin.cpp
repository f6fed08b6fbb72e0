#include "scene/bones/find_skin.h"

#include "host/node.h"
#include "scene/bones/bone_tree.h"

namespace {

host::Modifier* SkinOf(const host::IDerivedObject& stack) {
    for (int i = stack.NumModifiers() - 1; i >= 0; --i) {
        if (stack.GetModifier(i)->ClassID() == host::kSkinClass) {
            return stack.GetModifier(i);
        }
    }
    return nullptr;
}

}  // namespace

host::Modifier* FindSkin(const host::INode& node) {
    if (host::HasUserPropString(node, "NoSkin")) {
        return nullptr;
    }
    const host::Object* object = node.GetObjectRef();
    while (object != nullptr && object->SuperClassID() == host::kDerivedObjectSuperClass) {
        const auto* stack = dynamic_cast<const host::IDerivedObject*>(object);
        if (stack == nullptr) {
            return nullptr;
        }
        if (host::Modifier* skin = SkinOf(*stack)) {
            return skin;
        }
        object = stack->GetObjRef();
    }
    return nullptr;
}

int FindBoneIndex(const host::INode& node, const host::INode* commonTarget) {
    return NodeIndex(node, commonTarget);
}
