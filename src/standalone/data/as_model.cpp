#include "standalone/data/as_model.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <variant>

#include "io/clean_name.h"
#include "standalone/data/node_order.h"
#include "standalone/data/property_lines.h"
#include "standalone/data/property_reader.h"

namespace standalone {
namespace {

using eNames = std::unordered_set<std::string>;

// What two bones must not have in common.
std::string OutputName(const std::string& name) {
    return CleanNodeName(name, true);
}

bool IsModel(const eNodeData& node) {
    const eUserProperties properties(node.properties);
    return properties.Find("Model") || properties.Find("XModel");
}

bool HasGeometry(const eSceneData& scene, const eNodeData& node) {
    if (node.object < 0) {
        return false;
    }
    const eObjectKind& kind = scene.objects[static_cast<std::size_t>(node.object)].kind;
    return std::holds_alternative<eMeshObject>(kind) || std::holds_alternative<eBoxObject>(kind) ||
           std::holds_alternative<eSphereObject>(kind) || std::holds_alternative<eCylinderObject>(kind);
}

// The last part of the path; the artist's own nodes keep their names, so it is the root that gives way.
std::string RootName(const eSceneData& scene, const std::string& modelPath) {
    eNames taken;
    for (const eNodeData& node : scene.nodes) {
        taken.insert(OutputName(node.name));
    }
    const std::size_t slash = modelPath.find_last_of("/\\");
    std::string name = slash == std::string::npos ? modelPath : modelPath.substr(slash + 1);
    while (name.empty() || taken.contains(OutputName(name))) {
        name += name.empty() ? "model" : "_root";
    }
    return name;
}

void MarkGeometry(eSceneData& scene, int top) {
    std::vector<int> waiting{top};
    while (!waiting.empty()) {
        eNodeData& node = scene.nodes[static_cast<std::size_t>(waiting.back())];
        waiting.pop_back();
        if (HasGeometry(scene, node) && !eUserProperties(node.properties).Find("Poly")) {
            AppendPropertyLine(node.properties, "Poly");
        }
        waiting.insert(waiting.end(), node.children.begin(), node.children.end());
    }
}

}  // namespace

void GatherAsModel(eSceneData& scene, const std::string& modelPath) {
    const auto isModel = [&](int root) { return IsModel(scene.nodes[static_cast<std::size_t>(root)]); };
    const auto gathered = std::stable_partition(scene.roots.begin(), scene.roots.end(), isModel);
    if (gathered == scene.roots.end()) {
        return;
    }
    const int root = static_cast<int>(scene.nodes.size());
    eNodeData model;
    model.name = RootName(scene, modelPath);
    model.properties = "Model=" + modelPath;
    model.object = static_cast<int>(scene.objects.size());
    model.children.assign(gathered, scene.roots.end());
    scene.objects.push_back({{}, eHelperObject{}, {}});
    for (const int child : model.children) {
        scene.nodes[static_cast<std::size_t>(child)].parent = root;
    }
    scene.nodes.push_back(std::move(model));
    scene.roots.erase(gathered, scene.roots.end());
    scene.roots.insert(scene.roots.begin(), root);
    MarkGeometry(scene, root);
    SortNodesDepthFirst(scene);
}

void MakeNamesUnique(eSceneData& scene) {
    eNames taken;
    std::unordered_map<std::string, int> nextNumbers;  // by output name
    for (eNodeData& node : scene.nodes) {
        if (taken.insert(OutputName(node.name)).second) {
            continue;
        }
        int& number = nextNumbers.try_emplace(OutputName(node.name), 2).first->second;
        const std::string name = node.name;
        do {
            node.name = name + "_" + std::to_string(number++);
        } while (!taken.insert(OutputName(node.name)).second);
    }
}

}  // namespace standalone
