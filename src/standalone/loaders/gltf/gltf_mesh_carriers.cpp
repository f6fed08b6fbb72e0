#include "standalone/loaders/gltf/gltf_mesh_carriers.h"

#include <algorithm>

#include "standalone/loaders/gltf/file/gltf_json.h"

namespace standalone {
namespace {

bool HasWholePositions(const tinygltf::Model& model, const tinygltf::Mesh& mesh) {
    return std::ranges::all_of(mesh.primitives, [&](const tinygltf::Primitive& primitive) {
        const auto positions = primitive.attributes.find("POSITION");
        return positions != primitive.attributes.end() &&
               model.accessors[static_cast<std::size_t>(positions->second)].componentType !=
                   TINYGLTF_COMPONENT_TYPE_FLOAT;
    });
}

bool OnlyMovesAndScales(const tinygltf::Node& node) {
    return node.matrix.empty() && node.rotation.empty() && node.scale.size() == 3 &&
           node.scale[0] == node.scale[1] && node.scale[0] == node.scale[2];
}

bool IsCarrier(const tinygltf::Model& model, const tinygltf::Node& node) {
    const bool holdsMeshAlone = node.name.empty() && node.children.empty() && node.extensions.empty() &&
                                node.camera < 0 && node.skin < 0 && node.mesh >= 0;
    return holdsMeshAlone && OnlyMovesAndScales(node) &&
           HasWholePositions(model, model.meshes[static_cast<std::size_t>(node.mesh)]);
}

// Lists and objects say nothing as long as no value stands in them.
bool HasExtras(const eJsonTree& json, eJsonIndex node) {
    const eJsonIndex extras = json.FindMember(node, "extras");
    const eJsonIndex end = extras == kNoJson ? kNoJson : json.values[extras].end;
    for (eJsonIndex value = extras; value != end; ++value) {
        if (json.Is(value, eJsonKind::Boolean) || json.IsNumber(value) || json.Is(value, eJsonKind::Text)) {
            return true;
        }
    }
    return false;
}

bool CanTakeMesh(const tinygltf::Node& node) {
    return !node.name.empty() && node.mesh < 0 && node.camera < 0 &&
           !node.extensions.contains("KHR_lights_punctual");
}

// The nodes that something but the tree names.
std::vector<bool> NamedNodes(const tinygltf::Model& model) {
    std::vector<bool> named(model.nodes.size());
    for (const tinygltf::Animation& animation : model.animations) {
        for (const tinygltf::AnimationChannel& channel : animation.channels) {
            if (channel.target_node >= 0) {
                named[static_cast<std::size_t>(channel.target_node)] = true;
            }
        }
    }
    for (const tinygltf::Skin& skin : model.skins) {
        for (const int joint : skin.joints) {
            named[static_cast<std::size_t>(joint)] = true;
        }
    }
    return named;
}

}  // namespace

void TakeOutMeshCarriers(const tinygltf::Model& model, const eJsonTree& json, eGltfHierarchy& hierarchy) {
    constexpr int kNone = -1, kSeveral = -2;
    const std::vector<eJsonIndex> entries = GltfEntries(json, "nodes");
    const std::vector<bool> named = NamedNodes(model);
    hierarchy.carriers.assign(model.nodes.size(), kNone);
    for (const int number : hierarchy.order) {
        const auto node = static_cast<std::size_t>(number);
        const int parent = hierarchy.parents[node];
        if (parent >= 0 && !named[node] && IsCarrier(model, model.nodes[node]) &&
            CanTakeMesh(model.nodes[static_cast<std::size_t>(parent)]) && !HasExtras(json, entries[node])) {
            int& carrier = hierarchy.carriers[static_cast<std::size_t>(parent)];
            carrier = carrier == kNone ? number : kSeveral;
        }
    }
    std::ranges::replace(hierarchy.carriers, kSeveral, kNone);
    std::erase_if(hierarchy.order, [&](int node) {
        const int parent = hierarchy.parents[static_cast<std::size_t>(node)];
        return parent >= 0 && hierarchy.carriers[static_cast<std::size_t>(parent)] == node;
    });
}

}  // namespace standalone
