#pragma once

#include <memory>
#include <string>

#include "host/object.h"
#include "host/scene_element.h"
#include "host/values.h"

namespace host {

class Mtl;

// Something that an exporter attaches to a node; the node owns it.
class RenderData {
public:
    virtual ~RenderData() = default;
};

// A node evaluated at a time: its object behind all modifiers. The object stays the host's and may be void
// after the next evaluation of any node.
struct ObjectState {
    Object* obj = nullptr;
};

// A node of the scene's tree. Texts are bytes in code page 1251.
class INode : public ReferenceTarget {
public:
    std::uint32_t SuperClassID() const override { return kNodeSuperClass; }
    ClassId ClassID() const override { return {kNodeSuperClass, 0}; }

    virtual const std::string& GetName() const = 0;

    // The scene root has no parent; every other node has one.
    virtual INode* GetParentNode() const = 0;
    virtual int NumberOfChildren() const = 0;
    // In a stable order.
    virtual INode* GetChildNode(int index) const = 0;

    virtual bool IsNodeHidden() const = 0;
    virtual bool Selected() const = 0;
    virtual bool IsGroupMember() const = 0;
    virtual bool IsGroupHead() const = 0;
    virtual bool Renderable() const = 0;
    // 0 to 1; 0.5 and above counts as visible.
    virtual float GetVisibility(TimeValue t) const = 0;

    virtual Mtl* GetMtl() const = 0;
    virtual INode* GetTarget() const = 0;

    // Node to world, without the object offset.
    virtual Matrix3 GetNodeTM(TimeValue t) const = 0;
    // Object to world: the object offset, then the node.
    virtual Matrix3 GetObjTMAfterWSM(TimeValue t) const = 0;
    virtual Point3 GetObjOffsetPos() const = 0;
    virtual Quat GetObjOffsetRot() const = 0;
    virtual Point3 GetObjOffsetScale() const = 0;

    // The object with its modifiers, unevaluated; null for a node without object.
    virtual Object* GetObjectRef() const = 0;
    virtual ObjectState EvalWorldState(TimeValue t) = 0;

    // The whole user-defined property text.
    virtual const std::string& GetUserPropBuffer() const = 0;
    // The host's own property reader: true if the key exists, with its value.
    virtual bool GetUserPropString(const char* key, std::string& value) const = 0;
    virtual bool GetUserPropInt(const char* key, int& value) const = 0;

    virtual RenderData* GetRenderData() const = 0;
    virtual void SetRenderData(std::unique_ptr<RenderData> data) = 0;
};

// True if the node has the key, whatever its value.
inline bool HasUserPropString(const INode& node, const char* key) {
    std::string value;
    return node.GetUserPropString(key, value);
}

}  // namespace host
