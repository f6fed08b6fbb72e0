#include "standalone/loaders/gltf/gltf_visibility.h"

#include "standalone/loaders/shared/hide_with_above.h"

namespace standalone {
namespace {

bool IsShownAtRest(const tinygltf::Node& node) {
    const auto extension = node.extensions.find("KHR_node_visibility");
    return extension == node.extensions.end() || !extension->second.Has("visible") ||
           extension->second.Get("visible").Get<bool>();
}

std::vector<eVisibilityKey> KeysOf(const eGltfCurve& curve) {
    std::vector<eVisibilityKey> keys;
    for (std::size_t key = 0; key < curve.Count(); ++key) {
        const float value = curve.Value(key)[0] < 0.5F ? 0.0F : 1.0F;
        if (keys.empty() || keys.back().value != value) {
            keys.push_back({curve.frames[key], value});
        }
    }
    return keys;
}

}  // namespace

void SetGltfVisibility(eGltfImport& import) {
    for (const int node : import.hierarchy.order) {
        eNodeData& record = import.RecordOf(node);
        record.visibility = IsShownAtRest(import.model.nodes[static_cast<std::size_t>(node)]) ? 1.0F : 0.0F;
        record.visibilityKeys = KeysOf(import.curves[static_cast<std::size_t>(node)].visibility);
        if (record.parent >= 0) {
            HideWithAbove(import.scene.nodes[static_cast<std::size_t>(record.parent)], record);
        }
    }
}

}  // namespace standalone
