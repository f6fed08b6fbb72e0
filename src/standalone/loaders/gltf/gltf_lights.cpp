#include "standalone/loaders/gltf/gltf_lights.h"

#include <algorithm>
#include <numbers>

#include "standalone/loaders/gltf/file/gltf_json.h"

namespace standalone {
namespace {

eLightKind KindOf(const std::string& type) {
    return type == "spot"          ? eLightKind::Spot
           : type == "directional" ? eLightKind::Directional
                                   : eLightKind::Omni;
}

// The file measures a cone from its axis, the host across.
float FullAngle(double radians) {
    return static_cast<float>(2 * radians * 180 / std::numbers::pi);
}

float MultiplierOf(const eGltfImport& import, int node, int light) {
    const eJsonIndex list = FindJson(import.json, kJsonRoot, {"extensions", "KHR_lights_punctual", "lights"});
    const eJsonIndex entries[] = {JsonElements(import.json, list)[static_cast<std::size_t>(light)],
                                  GltfEntries(import.json, "nodes")[static_cast<std::size_t>(node)]};
    for (const eJsonIndex entry : entries) {
        if (const std::optional<double> multiplier = ExtraNumber(import.json, entry, "multiplier")) {
            return static_cast<float>(*multiplier);
        }
    }
    return 1;
}

}  // namespace

int GltfLightOf(const tinygltf::Node& node) {
    const auto extension = node.extensions.find("KHR_lights_punctual");
    return extension == node.extensions.end() ? -1 : extension->second.Get("light").GetNumberAsInt();
}

eLightObject MakeGltfLight(const eGltfImport& import, int node, int light) {
    const tinygltf::Light& source = import.model.lights[static_cast<std::size_t>(light)];
    eLightObject object;
    object.kind = KindOf(source.type);
    if (!source.color.empty()) {
        const auto part = [&](std::size_t i) {
            return static_cast<float>(std::clamp(source.color[i], 0.0, 1.0));
        };
        object.color = {part(0), part(1), part(2)};
    }
    object.multiplier = MultiplierOf(import, node, light);
    if (object.kind == eLightKind::Spot) {
        object.hotspot = FullAngle(source.spot.innerConeAngle);
        object.falloff = FullAngle(source.spot.outerConeAngle);
    }
    if (source.range > 0) {
        object.attenuation = eAttenuation{0, static_cast<float>(source.range)};
    }
    return object;
}

}  // namespace standalone
