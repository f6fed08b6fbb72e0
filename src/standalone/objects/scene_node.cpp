#include "standalone/objects/scene_node.h"

#include "host/material.h"

#include "standalone/data/transform_track.h"
#include "standalone/objects/scene.h"

namespace standalone {

// The scene root is the first element of the document, so that a node's place is one behind its index.
eSceneNode::eSceneNode(eScene& ownScene, const eNodeData& nodeData, int nodeIndex)
    : eElement(ownScene.hold, static_cast<std::size_t>(nodeIndex + 1), nodeData.jointFlags),
      scene(ownScene),
      data(nodeData),
      index(nodeIndex) {}

host::INode* eSceneNode::GetParentNode() const {
    if (index < 0) {
        return nullptr;
    }
    return data.parent < 0 ? &scene.Root() : scene.Node(data.parent);
}

host::INode* eSceneNode::GetChildNode(int child) const {
    return scene.Node(data.children[static_cast<std::size_t>(child)]);
}

float eSceneNode::GetVisibility(host::TimeValue t) const {
    return VisibilityAt(data, scene.FrameOf(t));
}

host::Mtl* eSceneNode::GetMtl() const {
    return scene.Material(data.material);
}

host::INode* eSceneNode::GetTarget() const {
    return scene.Node(data.target);
}

host::Matrix3 eSceneNode::GetNodeTM(host::TimeValue t) const {
    return scene.world.At(index, t);
}

host::Matrix3 eSceneNode::GetObjTMAfterWSM(host::TimeValue t) const {
    return PlacementMatrix(data.offset) * GetNodeTM(t);
}

host::Quat eSceneNode::GetObjOffsetRot() const {
    return HostRotation(data.offset.rotation);
}

host::Object* eSceneNode::GetObjectRef() const {
    eSceneObject* object = scene.Object(data.object);
    return object != nullptr ? &object->Reference() : nullptr;
}

host::ObjectState eSceneNode::EvalWorldState(host::TimeValue) {
    eSceneObject* object = scene.Object(data.object);
    return {object != nullptr ? &object->Evaluated(*this) : nullptr};
}

std::optional<std::string_view> eSceneNode::FindProperty(const char* key) const {
    if (data.properties.empty()) {
        return std::nullopt;
    }
    if (properties == nullptr) {
        properties = std::make_unique<const eUserProperties>(data.properties);
    }
    return properties->Find(key);
}

bool eSceneNode::GetUserPropString(const char* key, std::string& value) const {
    const std::optional<std::string_view> found = FindProperty(key);
    if (found) {
        value = *found;
    }
    return found.has_value();
}

bool eSceneNode::GetUserPropInt(const char* key, int& value) const {
    const std::optional<std::string_view> found = FindProperty(key);
    if (found) {
        value = ReadInteger(*found);
    }
    return found.has_value();
}

host::ReferenceTarget* eSceneNode::GetReference(int reference) const {
    switch (reference) {
        case 0:
            return GetObjectRef();
        case 1:
            return GetMtl();
        default:
            return GetChildNode(reference - 2);
    }
}

}  // namespace standalone
