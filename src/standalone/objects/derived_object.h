#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "standalone/objects/geometry_object.h"
#include "standalone/objects/skin.h"

namespace standalone {

class eSceneNode;

// Geometry behind its skins, as one node shows it: what a node with a skin evaluates to. Nodes that share the
// object share this one too, so its mesh is that of the node evaluated last.
class eSkinnedObject : public eTriangleObject {
public:
    // `skins` from the bottom of the stack up. All must outlive the object.
    eSkinnedObject(eScene& scene, std::size_t place, eTriangleObject& base, std::vector<const eSkin*> skins);

    host::ClassId ClassID() const override { return base.ClassID(); }
    // The rest mesh itself while all skins are off.
    host::Mesh& Evaluate(host::TimeValue t) const override;
    void ReleaseMesh() override;

    void SetNode(const eSceneNode& evaluatedNode) { node = &evaluatedNode; }

private:
    // What the deformed mesh was made from.
    struct ePose {
        const eSceneNode* node = nullptr;
        host::TimeValue time = 0;
        std::vector<unsigned> skins;  // generation + 1 of each skin, 0 for one that is off

        friend bool operator==(const ePose&, const ePose&) = default;
    };

    ePose PoseAt(host::TimeValue t) const;

    eScene& scene;
    eTriangleObject& base;
    std::vector<const eSkin*> skins;
    const eSceneNode* node = nullptr;
    mutable std::optional<host::Mesh> deformed;
    mutable ePose pose;  // of `deformed`
};

// An object with its modifiers.
class eDerivedObject : public eElement<host::IDerivedObject> {
public:
    // `triangles` is `base` where that converts to triangles, else null. Base and data must outlive the
    // object.
    eDerivedObject(eScene& scene, std::size_t place, host::Object& base, eTriangleObject* triangles,
                   const std::vector<eModifierKind>& modifiers);

    std::uint32_t SuperClassID() const override { return host::kDerivedObjectSuperClass; }
    host::ClassId ClassID() const override { return {host::kDerivedObjectSuperClass, 0}; }

    int NumModifiers() const override { return static_cast<int>(modifiers.size()); }
    host::Modifier* GetModifier(int index) const override {
        return modifiers[static_cast<std::size_t>(index)].get();
    }
    host::Object* GetObjRef() const override { return &base; }

    // The base object, then the modifiers.
    int NumRefs() const override { return 1 + NumModifiers(); }
    host::ReferenceTarget* GetReference(int reference) const override;

    // The object behind its modifiers, as the node shows it.
    host::Object& Evaluated(const eSceneNode& node);

private:
    host::Object& base;
    std::vector<std::unique_ptr<host::Modifier>> modifiers;  // the top of the stack first
    std::unique_ptr<eSkinnedObject> skinned;                 // where a skin acts on triangles
};

}  // namespace standalone
