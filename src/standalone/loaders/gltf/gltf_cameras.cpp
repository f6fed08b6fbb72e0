#include "standalone/loaders/gltf/gltf_cameras.h"

#include <cmath>
#include <numbers>
#include <optional>

#include "standalone/data/overloaded.h"
#include "standalone/data/world_matrices.h"
#include "standalone/loaders/gltf/file/gltf_json.h"

namespace standalone {
namespace {

constexpr double kDefaultAspect = 4.0 / 3.0;
constexpr float kDefaultDistance = 1;

// The bounds of an object's points, in its own space; empty for what has none. Of primitives made from a
// "shape" the mesh is gone, and their own sizes tell.
host::Box3 BoundsOf(const eObjectKind& kind) {
    const auto box = [](float x, float y, float low, float high) {
        host::Box3 bounds;
        bounds += host::Point3{-x, -y, low};
        bounds += host::Point3{x, y, high};
        return bounds;
    };
    const auto splines = [](const eLineObject& line) {
        host::Box3 bounds;
        for (const eSpline& spline : line.splines) {
            for (const host::Point3& point : spline.points) {
                bounds += point;
            }
        }
        return bounds;
    };
    return std::visit(
        eOverloaded{
            [&](const eMeshObject& mesh) { return host::BoundsOf(mesh.mesh); },
            [&](const eBoxObject& b) { return box(b.width / 2, b.length / 2, 0, b.height); },
            [&](const eSphereObject& s) { return box(s.radius, s.radius, -s.radius, s.radius); },
            [&](const eCylinderObject& c) { return box(c.radius, c.radius, 0, c.height); },
            [&](const eLineObject& line) { return splines(line); },
            [](const auto&) { return host::Box3{}; },
        },
        kind);
}

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
            ofObjects[object] = BoundsOf(scene.objects[object].kind);
        }
        const host::Box3& bounds = *ofObjects[object];
        const host::Matrix3 toWorld = PlacementMatrix(record.offset) * world.At(static_cast<int>(node), 0);
        for (int corner = 0; corner < 8 && !bounds.IsEmpty(); ++corner) {
            all += Corner(bounds, corner) * toWorld;
        }
    }
    return all.IsEmpty() ? host::Point3{} : (all.pmin + all.pmax) * 0.5F;
}

std::optional<float> ToldDistance(const eGltfImport& import, const eGltfCameraNode& use) {
    const eJsonIndex entries[] = {GltfEntries(import.json, "cameras")[static_cast<std::size_t>(use.camera)],
                                  GltfEntries(import.json, "nodes")[static_cast<std::size_t>(use.node)]};
    for (const eJsonIndex entry : entries) {
        const std::optional<double> distance = ExtraNumber(import.json, entry, "targetDistance");
        if (distance && *distance > 0 && std::isfinite(static_cast<float>(*distance))) {
            return static_cast<float>(*distance);
        }
        if (distance) {
            import.report.Problem(import.json.PathOf(entry) + "/extras/targetDistance",
                                  "the number must be above 0");
        }
    }
    return std::nullopt;
}

float DistanceToCentre(const host::Matrix3& camera, const host::Point3& axis, const host::Point3& centre) {
    const float distance = DotProd(centre - camera.GetTrans(), axis);
    return distance > 1e-3F ? distance : kDefaultDistance;
}

}  // namespace

eCameraObject MakeGltfCamera(const eGltfImport& import, int camera) {
    const tinygltf::Camera& source = import.model.cameras[static_cast<std::size_t>(camera)];
    eCameraObject object;
    if (source.type == "orthographic") {
        import.report.Notice(eGltfNotice::CannotShow, "orthographic cameras");
        return object;
    }
    const tinygltf::PerspectiveCamera& lens = source.perspective;
    const double aspect = lens.aspectRatio > 0 ? lens.aspectRatio : kDefaultAspect;
    const double horizontal = 2 * std::atan(std::tan(lens.yfov / 2) * aspect);
    object.fov = static_cast<float>(horizontal * 180 / std::numbers::pi);
    return object;
}

namespace {

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

void AddGltfCameraTargets(eGltfImport& import) {
    eSceneData& scene = import.scene;
    if (import.cameraNodes.empty()) {
        return;
    }
    eWorldMatrices world(scene);
    const host::Point3 centre = CentreOf(scene, world);
    for (const eGltfCameraNode& use : import.cameraNodes) {
        const eNodeData& record = scene.nodes[static_cast<std::size_t>(use.record)];
        const host::Matrix3 camera = world.At(use.record, 0);
        const host::Matrix3 parent = record.parent < 0 ? host::Matrix3() : world.At(record.parent, 0);
        const host::Point3 axis = -Normalize(camera.GetRow(2));
        const float distance = ToldDistance(import, use).value_or(DistanceToCentre(camera, axis, centre));
        std::get<eCameraObject>(scene.objects[static_cast<std::size_t>(record.object)].kind).targetDistance =
            distance;
        AddTarget(scene, use.record, (camera.GetTrans() + axis * distance) * Inverse(parent));
    }
}

}  // namespace standalone
