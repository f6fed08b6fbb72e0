#include "standalone/loaders/shared/camera_targets.h"

#include "standalone/data/world_matrices.h"
#include "standalone/loaders/shared/object_bounds.h"

namespace standalone {
namespace {

constexpr float kDefaultDistance = 1;

host::Point3 Corner(const host::Box3& box, int number) {
    return {(number & 1) != 0 ? box.pmax.x : box.pmin.x, (number & 2) != 0 ? box.pmax.y : box.pmin.y,
            (number & 4) != 0 ? box.pmax.z : box.pmin.z};
}

// The middle of all geometry at frame 0.
host::Point3 CentreOf(const eSceneData& scene, eWorldMatrices& world) {
    host::Box3 all;
    std::vector<std::optional<host::Box3>> ofObjects(scene.objects.size());
    for (std::size_t node = 0; node < scene.nodes.size(); ++node) {
        const eNodeData& record = scene.nodes[node];
        if (record.object < 0) {
            continue;
        }
        const auto object = static_cast<std::size_t>(record.object);
        if (!ofObjects[object]) {
            ofObjects[object] = BoundsOfPoints(scene.objects[object].kind);
        }
        const host::Box3& bounds = *ofObjects[object];
        const host::Matrix3 toWorld = PlacementMatrix(record.offset) * world.At(static_cast<int>(node), 0);
        for (int corner = 0; corner < 8 && !bounds.IsEmpty(); ++corner) {
            all += Corner(bounds, corner) * toWorld;
        }
    }
    return all.IsEmpty() ? host::Point3{} : (all.pmin + all.pmax) * 0.5F;
}

float DistanceToCentre(const host::Matrix3& camera, const host::Point3& axis, const host::Point3& centre) {
    const float distance = DotProd(centre - camera.GetTrans(), axis);
    return distance > 1e-3F ? distance : kDefaultDistance;
}

// A new node behind the camera's siblings, on the camera's axis.
void AddTarget(eSceneData& scene, int camera, const host::Point3& position) {
    eNodeData target;
    eNodeData& record = scene.nodes[static_cast<std::size_t>(camera)];
    target.name = record.name + "_target";
    target.groupMember = record.groupMember;
    target.parent = record.parent;
    target.transform.parts.position = position;
    target.object = static_cast<int>(scene.objects.size());
    scene.objects.push_back({{}, eTargetObject{}, {}});
    record.target = static_cast<int>(scene.nodes.size());
    std::vector<int>& siblings =
        record.parent < 0 ? scene.roots : scene.nodes[static_cast<std::size_t>(record.parent)].children;
    siblings.push_back(record.target);
    scene.nodes.push_back(std::move(target));
}

}  // namespace

void AddCameraTargets(eSceneData& scene, const std::vector<eCameraNode>& cameras) {
    if (cameras.empty()) {
        return;
    }
    eWorldMatrices world(scene);
    const host::Point3 centre = CentreOf(scene, world);
    for (const eCameraNode& use : cameras) {
        const eNodeData& record = scene.nodes[static_cast<std::size_t>(use.record)];
        const host::Matrix3 camera = world.At(use.record, 0);
        const host::Matrix3 parent = record.parent < 0 ? host::Matrix3() : world.At(record.parent, 0);
        const host::Point3 axis = -Normalize(camera.GetRow(2));
        const float distance = use.distance.value_or(DistanceToCentre(camera, axis, centre));
        std::get<eCameraObject>(scene.objects[static_cast<std::size_t>(record.object)].kind).targetDistance =
            distance;
        AddTarget(scene, use.record, (camera.GetTrans() + axis * distance) * Inverse(parent));
    }
}

}  // namespace standalone
