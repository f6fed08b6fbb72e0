#include "standalone/loaders/gltf/gltf_cameras.h"

#include <cmath>
#include <numbers>
#include <optional>

#include "standalone/loaders/gltf/file/gltf_json.h"
#include "standalone/loaders/shared/camera_targets.h"

namespace standalone {
namespace {

constexpr double kDefaultAspect = 4.0 / 3.0;

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
                                  eMessageId::GltfAboveZero);
        }
    }
    return std::nullopt;
}

}  // namespace

eCameraObject MakeGltfCamera(const eGltfImport& import, int camera) {
    const tinygltf::Camera& source = import.model.cameras[static_cast<std::size_t>(camera)];
    eCameraObject object;
    if (source.type == "orthographic") {
        import.report.CannotShow(ePhrase::LostOrthographic);
        return object;
    }
    const tinygltf::PerspectiveCamera& lens = source.perspective;
    const double aspect = lens.aspectRatio > 0 ? lens.aspectRatio : kDefaultAspect;
    const double horizontal = 2 * std::atan(std::tan(lens.yfov / 2) * aspect);
    object.fov = static_cast<float>(horizontal * 180 / std::numbers::pi);
    return object;
}

void AddGltfCameraTargets(eGltfImport& import) {
    std::vector<eCameraNode> cameras;
    for (const eGltfCameraNode& use : import.cameraNodes) {
        cameras.push_back({use.record, ToldDistance(import, use)});
    }
    AddCameraTargets(import.scene, cameras);
}

}  // namespace standalone
