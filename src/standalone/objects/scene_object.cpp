#include "standalone/objects/scene_object.h"

#include "standalone/data/overloaded.h"
#include "standalone/objects/camera_object.h"
#include "standalone/objects/light_object.h"
#include "standalone/objects/plain_object.h"
#include "standalone/objects/scene.h"
#include "standalone/objects/shape_object.h"

namespace standalone {

namespace {

using ePtr = std::unique_ptr<host::Object>;

ePtr MakeObject(eScene& scene, eObjectKind& kind, std::size_t place) {
    const auto plain = [&](std::uint32_t superClass, const host::ClassId& classId) -> ePtr {
        return std::make_unique<ePlainObject>(scene.hold, place, superClass, classId);
    };
    const auto geometry = [&](const auto&) -> ePtr {
        return std::make_unique<eGeometryObject>(scene, place, kind);
    };
    const auto shape = [&](const auto&) -> ePtr {
        return std::make_unique<eShapeObject>(scene.hold, place, kind);
    };
    return std::visit(
        eOverloaded{
            [&](const eHelperObject&) {
                return plain(host::kHelperSuperClass, {0x876234, 0});
            },
            [&](const eTargetObject&) { return plain(host::kGeometrySuperClass, host::kTargetClass); },
            [&](const eBoxObject& box) { return geometry(box); },
            [&](const eSphereObject& sphere) { return geometry(sphere); },
            [&](const eCylinderObject& cylinder) { return geometry(cylinder); },
            [&](const eMeshObject& mesh) { return geometry(mesh); },
            [&](const eRectangleObject& rectangle) { return shape(rectangle); },
            [&](const eCircleObject& circle) { return shape(circle); },
            [&](const eLineObject& line) { return shape(line); },
            [&](const eCameraObject& camera) -> ePtr {
                return std::make_unique<eCamera>(scene.hold, place, camera);
            },
            [&](const eLightObject& light) -> ePtr { return std::make_unique<eLight>(scene, place, light); },
            [&](const eOtherObject& other) { return plain(other.superClass, other.classId); },
        },
        kind);
}

}  // namespace

eSceneObject::eSceneObject(eScene& scene, eObjectData& data, std::size_t place)
    : base(MakeObject(scene, data.kind, place)) {
    if (!data.modifiers.empty()) {
        auto* triangles = dynamic_cast<eTriangleObject*>(base.get());
        derived = std::make_unique<eDerivedObject>(scene, place, *base, triangles, data.modifiers);
    }
}

}  // namespace standalone
