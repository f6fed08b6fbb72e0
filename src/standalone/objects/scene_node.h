#pragma once

#include <memory>
#include <string>

#include "host/node.h"
#include "standalone/data/property_reader.h"
#include "standalone/objects/element.h"
#include "standalone/scene_data.h"

namespace standalone {

class eScene;

// A node of the document, or the scene root.
class eSceneNode : public eElement<host::INode> {
public:
    // `index` is the node's place in eSceneData::nodes, -1 for the scene root. Scene and data must outlive
    // the node.
    eSceneNode(eScene& scene, const eNodeData& data, int index);

    int Index() const { return index; }

    const std::string& GetName() const override { return data.name; }
    host::INode* GetParentNode() const override;
    int NumberOfChildren() const override { return static_cast<int>(data.children.size()); }
    host::INode* GetChildNode(int child) const override;

    bool IsNodeHidden() const override { return data.hidden; }
    bool Selected() const override { return data.selected; }
    bool IsGroupMember() const override { return data.groupMember; }
    bool IsGroupHead() const override { return data.groupHead; }
    bool Renderable() const override { return data.renderable; }
    float GetVisibility(host::TimeValue t) const override;

    host::Mtl* GetMtl() const override;
    host::INode* GetTarget() const override;

    host::Matrix3 GetNodeTM(host::TimeValue t) const override;
    host::Matrix3 GetObjTMAfterWSM(host::TimeValue t) const override;
    host::Point3 GetObjOffsetPos() const override { return data.offset.position; }
    host::Quat GetObjOffsetRot() const override;
    host::Point3 GetObjOffsetScale() const override { return data.offset.scale; }

    host::Object* GetObjectRef() const override;
    host::ObjectState EvalWorldState(host::TimeValue t) override;

    const std::string& GetUserPropBuffer() const override { return data.properties; }
    bool GetUserPropString(const char* key, std::string& value) const override;
    bool GetUserPropInt(const char* key, int& value) const override;

    host::RenderData* GetRenderData() const override { return renderData.get(); }
    void SetRenderData(std::unique_ptr<host::RenderData> render) override { renderData = std::move(render); }

    // Object, material, children.
    int NumRefs() const override { return 2 + NumberOfChildren(); }
    host::ReferenceTarget* GetReference(int reference) const override;

private:
    std::optional<std::string_view> FindProperty(const char* key) const;

    eScene& scene;
    const eNodeData& data;
    int index;
    std::unique_ptr<host::RenderData> renderData;
    mutable std::unique_ptr<const eUserProperties> properties;  // read when first asked for
};

}  // namespace standalone
