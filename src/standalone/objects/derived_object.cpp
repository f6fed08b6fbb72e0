#include "standalone/objects/derived_object.h"

#include <algorithm>

#include "standalone/data/overloaded.h"
#include "standalone/objects/scene.h"

namespace standalone {

eSkinnedObject::eSkinnedObject(eScene& ownScene, std::size_t place, eTriangleObject& baseObject,
                               std::vector<const eSkin*> ownSkins)
    : eTriangleObject(ownScene.hold, place), scene(ownScene), base(baseObject), skins(std::move(ownSkins)) {}

eSkinnedObject::ePose eSkinnedObject::PoseAt(host::TimeValue t) const {
    ePose result{node, t, {}};
    for (const eSkin* skin : skins) {
        result.skins.push_back(skin->IsOn() ? skin->Generation() + 1 : 0);
    }
    return result;
}

host::Mesh& eSkinnedObject::Evaluate(host::TimeValue t) const {
    host::Mesh& rest = base.Evaluate(t);
    ePose wanted = PoseAt(t);
    if (node == nullptr || std::ranges::count(wanted.skins, 0U) == std::ssize(wanted.skins)) {
        return rest;
    }
    scene.recentMeshes.Use(const_cast<eSkinnedObject&>(*this));
    if (deformed && pose == wanted) {
        return *deformed;
    }
    if (deformed) {
        deformed->verts = rest.verts;
        deformed->specifiedNormals = rest.specifiedNormals;
    } else {
        deformed = rest;
    }
    for (const eSkin* skin : skins) {
        if (skin->IsOn()) {
            skin->Deform(*deformed, *node, t);
        }
    }
    pose = std::move(wanted);
    return *deformed;
}

void eSkinnedObject::ReleaseMesh() {
    deformed.reset();
}

eDerivedObject::eDerivedObject(eScene& scene, std::size_t place, host::Object& baseObject,
                               eTriangleObject* triangles, const std::vector<eModifierKind>& kinds)
    : eElement(scene.hold, place), base(baseObject) {
    std::vector<const eSkin*> skins;
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        modifiers.push_back(
            std::visit(eOverloaded{[&](const eSkinModifier& kind) -> std::unique_ptr<host::Modifier> {
                                       auto skin = std::make_unique<eSkin>(scene, i, kind, *this);
                                       skins.insert(skins.begin(), skin.get());
                                       return skin;
                                   },
                                   [&](const eOtherModifier& kind) -> std::unique_ptr<host::Modifier> {
                                       return std::make_unique<eInertModifier>(scene.hold, i, kind.classId);
                                   }},
                       kinds[i]));
    }
    if (triangles != nullptr && !skins.empty()) {
        skinned = std::make_unique<eSkinnedObject>(scene, place, *triangles, std::move(skins));
    }
}

host::ReferenceTarget* eDerivedObject::GetReference(int reference) const {
    return reference == 0 ? static_cast<host::ReferenceTarget*>(&base) : GetModifier(reference - 1);
}

host::Object& eDerivedObject::Evaluated(const eSceneNode& node) {
    if (skinned == nullptr) {
        return base;
    }
    skinned->SetNode(node);
    return *skinned;
}

}  // namespace standalone
