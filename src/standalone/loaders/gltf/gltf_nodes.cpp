#include "standalone/loaders/gltf/gltf_nodes.h"

#include <algorithm>
#include <array>

#include "standalone/data/transform_track.h"
#include "standalone/loaders/gltf/file/gltf_json.h"
#include "standalone/loaders/gltf/file/gltf_place.h"
#include "standalone/loaders/gltf/gltf_axes.h"

namespace standalone {
namespace {

// The file's numbers, or those that stand for a missing list.
template <std::size_t Count>
std::array<float, Count> NumbersOf(const std::vector<double>& numbers,
                                   const std::array<float, Count>& otherwise) {
    std::array<float, Count> values = otherwise;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        values[i] = static_cast<float>(numbers[i]);
    }
    return values;
}

host::Point3 PointOf(const std::array<float, 3>& numbers) {
    return {numbers[0], numbers[1], numbers[2]};
}

eTransform TransformOf(const tinygltf::Node& node, const eAxes& axes, const std::string& place,
                       eImportReport& report) {
    eTransform transform;
    if (!node.matrix.empty()) {
        transform.matrix = ToHostMatrix(FileMatrix(NumbersOf<16>(node.matrix, {})), axes);
        return transform;
    }
    const auto rotation = NumbersOf<4>(node.rotation, {0, 0, 0, 1});
    if (rotation == std::array<float, 4>{}) {
        report.Problem(place + "/rotation", eMessageId::GltfRotation);
        return transform;
    }
    transform.parts.position = ToHostPosition(PointOf(NumbersOf<3>(node.translation, {0, 0, 0})), axes);
    transform.parts.rotation = ToHostRotation(rotation, axes);
    transform.parts.scale = ToHostScale(PointOf(NumbersOf<3>(node.scale, {1, 1, 1})), axes);
    return transform;
}

// A node that is only a camera or a light is one itself; with a mesh the mesh takes the node.
bool LooksAlongAnAxis(const tinygltf::Node& node) {
    return node.mesh < 0 && (node.camera >= 0 || node.extensions.contains("KHR_lights_punctual"));
}

std::string NameOf(const tinygltf::Node& node, int number, eImportReport& report) {
    return node.name.empty() ? "node_" + std::to_string(number) : report.Ansi(node.name);
}

void PutIntoTree(eGltfImport& import, int node) {
    const int parent = import.hierarchy.parents[static_cast<std::size_t>(node)];
    const int record = import.NodeOf(node).record;
    if (parent < 0) {
        import.scene.roots.push_back(record);
        return;
    }
    import.RecordOf(node).parent = import.NodeOf(parent).record;
    import.RecordOf(parent).children.push_back(record);
}

}  // namespace

void MakeGltfNodes(eGltfImport& import) {
    import.nodes.resize(import.model.nodes.size());
    for (std::size_t node = 0; node < import.nodes.size(); ++node) {
        import.nodes[node].keepsOwnAxes = LooksAlongAnAxis(import.model.nodes[node]);
    }
    const std::vector<eJsonIndex> entries = GltfEntries(import.json, "nodes");
    for (const int number : import.hierarchy.order) {
        const tinygltf::Node& node = import.model.nodes[static_cast<std::size_t>(number)];
        import.NodeOf(number).record = static_cast<int>(import.scene.nodes.size());
        eNodeData& record = import.scene.nodes.emplace_back();
        record.name = NameOf(node, number, import.report);
        record.transform =
            TransformOf(node, import.AxesOf(number), GltfPlace("nodes", number), import.report);
        import.NodeOf(number).shape =
            ReadNodeExtras(import.json, entries[static_cast<std::size_t>(number)], import.report, record);
        PutIntoTree(import, number);
    }
    const auto carriers =
        std::ranges::count_if(import.hierarchy.carriers, [](int node) { return node >= 0; });
    if (import.hierarchy.order.size() + static_cast<std::size_t>(carriers) < import.nodes.size()) {
        import.report.CannotShow(ePhrase::LostNodes);
    }
}

eTransform GltfRestTransform(const eGltfImport& import, int node) {
    eImportReport ignored;
    return TransformOf(import.model.nodes[static_cast<std::size_t>(node)], {}, "", ignored);
}

std::vector<host::Matrix3> GltfWorldMatrices(const eGltfImport& import) {
    std::vector<host::Matrix3> worlds(import.model.nodes.size());
    for (const int number : import.hierarchy.order) {
        const auto node = static_cast<std::size_t>(number);
        const int parent = import.hierarchy.parents[node];
        worlds[node] = StillMatrix(GltfRestTransform(import, number));
        if (parent >= 0) {
            worlds[node] = worlds[node] * worlds[static_cast<std::size_t>(parent)];
        }
    }
    return worlds;
}

}  // namespace standalone
