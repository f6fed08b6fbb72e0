#include "standalone/loaders/gltf/gltf_hierarchy.h"

#include <algorithm>
#include <string>

#include "standalone/loaders/gltf/file/gltf_place.h"

namespace standalone {
namespace {

// As deep as scene documents may be.
constexpr int kMostLevels = 2000;

void ReadParents(const tinygltf::Model& model, std::vector<int>& parents, eImportReport& report) {
    parents.assign(model.nodes.size(), -1);
    for (std::size_t node = 0; node < model.nodes.size(); ++node) {
        for (const int child : model.nodes[node].children) {
            int& parent = parents[static_cast<std::size_t>(child)];
            if (parent >= 0) {
                report.Problem(GltfPlace("nodes", node) + "/children", eMessageId::GltfSecondParent, child,
                               parent);
            }
            parent = static_cast<int>(node);
        }
    }
}

struct eVisit {
    int node = 0;
    int level = 1;
};

// The nodes below the roots, depth first, with their levels. Each node has one parent, so no node comes
// twice.
std::vector<eVisit> Walk(const tinygltf::Model& model, const std::vector<int>& roots) {
    std::vector<eVisit> waiting;
    std::vector<eVisit> visits;
    for (auto root = roots.rbegin(); root != roots.rend(); ++root) {
        waiting.push_back({*root, 1});
    }
    while (!waiting.empty()) {
        const eVisit visit = waiting.back();
        waiting.pop_back();
        visits.push_back(visit);
        const std::vector<int>& children = model.nodes[static_cast<std::size_t>(visit.node)].children;
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            waiting.push_back({*child, visit.level + 1});
        }
    }
    return visits;
}

std::vector<int> NodesWithoutParent(const std::vector<int>& parents) {
    std::vector<int> roots;
    for (std::size_t node = 0; node < parents.size(); ++node) {
        if (parents[node] < 0) {
            roots.push_back(static_cast<int>(node));
        }
    }
    return roots;
}

// A node below no root is below itself.
void CheckTree(const tinygltf::Model& model, const std::vector<int>& parents, eImportReport& report) {
    std::vector<bool> isReached(model.nodes.size());
    for (const eVisit& visit : Walk(model, NodesWithoutParent(parents))) {
        isReached[static_cast<std::size_t>(visit.node)] = true;
        if (visit.level == kMostLevels + 1) {
            report.Problem(GltfPlace("nodes", visit.node), eMessageId::ImportNodeDepth, kMostLevels);
        }
    }
    const auto unreached = std::ranges::find(isReached, false);
    if (unreached != isReached.end()) {
        report.Problem(GltfPlace("nodes", static_cast<std::size_t>(unreached - isReached.begin())),
                       eMessageId::GltfOwnAncestor);
    }
}

void CheckSceneRoots(const eGltfHierarchy& hierarchy, eImportReport& report) {
    std::vector<bool> isListed(hierarchy.parents.size());
    for (const int root : hierarchy.roots) {
        const auto index = static_cast<std::size_t>(root);
        if (hierarchy.parents[index] >= 0 || isListed[index]) {
            report.Problem(GltfPlace("scenes", hierarchy.scene) + "/nodes",
                           isListed[index] ? eMessageId::GltfRepeatedRoot : eMessageId::GltfRootBelow, root);
        }
        isListed[index] = true;
    }
}

}  // namespace

eGltfHierarchy ReadGltfHierarchy(const tinygltf::Model& model, eImportReport& report) {
    eGltfHierarchy hierarchy;
    ReadParents(model, hierarchy.parents, report);
    if (report.HasProblems()) {
        return hierarchy;
    }
    CheckTree(model, hierarchy.parents, report);
    if (model.scenes.empty()) {
        hierarchy.roots = NodesWithoutParent(hierarchy.parents);
    } else {
        hierarchy.scene = std::max(model.defaultScene, 0);
        hierarchy.roots = model.scenes[static_cast<std::size_t>(hierarchy.scene)].nodes;
        CheckSceneRoots(hierarchy, report);
    }
    if (report.HasProblems()) {
        return hierarchy;
    }
    for (const eVisit& visit : Walk(model, hierarchy.roots)) {
        hierarchy.order.push_back(visit.node);
    }
    if (model.scenes.size() > 1) {
        report.CannotShow(ePhrase::LostScenes);
    }
    return hierarchy;
}

}  // namespace standalone
