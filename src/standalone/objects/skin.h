#pragma once

#include <vector>

#include "host/object.h"
#include "standalone/objects/element.h"
#include "standalone/scene_data.h"

namespace standalone {

class eScene;
class eSceneNode;

// What every modifier of the document has: a class, and a switch that takes it out of the evaluation.
class eModifier : public eElement<host::Modifier> {
public:
    using eElement::eElement;

    std::uint32_t SuperClassID() const override { return host::kModifierSuperClass; }
    bool IsOn() const { return (AnimatableFlags() & kDisabledFlag) == 0; }
};

// A modifier of which only the class is known; it changes nothing.
class eInertModifier : public eModifier {
public:
    eInertModifier(eHold& hold, std::size_t place, const host::ClassId& id)
        : eModifier(hold, place), classId(id) {}

    host::ClassId ClassID() const override { return classId; }

private:
    host::ClassId classId;
};

// The skin: a linear blend of the bones' movement since the bind pose, relative to the node. It is its own
// reader of weights, since one skin acts on one object and so has one set of vertices.
class eSkin : public eModifier, public host::ISkin, public host::ISkinContextData {
public:
    // `owner` is the object whose stack the skin is in. All must outlive the skin.
    eSkin(eScene& scene, std::size_t place, const eSkinModifier& skin, const host::Object& owner);

    host::ClassId ClassID() const override { return host::kSkinClass; }
    host::ISkin* GetInterface(std::uint32_t id) override { return id == kSkinInterface ? this : nullptr; }
    // The object evaluates anew whenever pose or switch differ, so what is left is to forget what it has.
    void NotifyDependents(const host::Interval& interval, std::uint32_t partMask, std::uint32_t message,
                          std::uint32_t superClass, bool propagate) override;

    int GetNumBones() const override { return static_cast<int>(data.bones.size()); }
    host::INode* GetBone(int bone) const override;
    const host::ISkinContextData* GetContextInterface(const host::INode& node) const override;

    int GetNumAssignedBones(int vertex) const override;
    int GetAssignedBone(int vertex, int assignment) const override;
    float GetBoneWeight(int vertex, int assignment) const override;

    // Moves the vertices of the mesh, and its specified normals with the vertex of the first corner that uses
    // them, from where the node's object has them to where the bones take them at the time.
    void Deform(host::Mesh& mesh, const eSceneNode& node, host::TimeValue t) const;

    // Raised by NotifyDependents: whoever keeps a deformed mesh keeps the number that it was made with.
    unsigned Generation() const { return generation; }

private:
    std::vector<host::Matrix3> BoneMovements(const eSceneNode& node, host::TimeValue t) const;

    eScene& scene;
    const eSkinModifier& data;
    const host::Object& owner;
    unsigned generation = 0;
};

}  // namespace standalone
