#include "standalone/data/node_order.h"

#include <utility>

namespace standalone {
namespace {

// The nodes' present numbers in the order wanted. Trees may be deep, so the walk needs no stack of calls.
std::vector<int> DepthFirst(const eSceneData& scene) {
    std::vector<int> order;
    order.reserve(scene.nodes.size());
    std::vector<int> waiting(scene.roots.rbegin(), scene.roots.rend());
    while (!waiting.empty()) {
        const int node = waiting.back();
        waiting.pop_back();
        order.push_back(node);
        const std::vector<int>& children = scene.nodes[static_cast<std::size_t>(node)].children;
        waiting.insert(waiting.end(), children.rbegin(), children.rend());
    }
    return order;
}

class eRenumbering {
public:
    explicit eRenumbering(const std::vector<int>& order) : places(order.size()) {
        for (std::size_t place = 0; place < order.size(); ++place) {
            places[static_cast<std::size_t>(order[place])] = static_cast<int>(place);
        }
    }

    void Apply(int& node) const { node = node < 0 ? node : places[static_cast<std::size_t>(node)]; }
    void Apply(std::vector<int>& nodes) const {
        for (int& node : nodes) {
            Apply(node);
        }
    }
    void Apply(eNodeData& node) const {
        Apply(node.parent);
        Apply(node.target);
        Apply(node.children);
    }
    void Apply(eObjectData& object) const {
        if (auto* light = std::get_if<eLightObject>(&object.kind)) {
            Apply(light->listedNodes);
        }
        for (eModifierKind& modifier : object.modifiers) {
            if (auto* skin = std::get_if<eSkinModifier>(&modifier)) {
                Apply(skin->bones);
            }
        }
    }

private:
    std::vector<int> places;  // by present number
};

}  // namespace

void SortNodesDepthFirst(eSceneData& scene) {
    const std::vector<int> order = DepthFirst(scene);
    const eRenumbering renumbering(order);
    std::vector<eNodeData> sorted;
    sorted.reserve(order.size());
    for (const int number : order) {
        renumbering.Apply(sorted.emplace_back(std::move(scene.nodes[static_cast<std::size_t>(number)])));
    }
    scene.nodes = std::move(sorted);
    renumbering.Apply(scene.roots);
    for (eSelectionSet& set : scene.selectionSets) {
        renumbering.Apply(set.nodes);
    }
    for (eObjectData& object : scene.objects) {
        renumbering.Apply(object);
    }
}

}  // namespace standalone
