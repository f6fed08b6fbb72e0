#include "standalone/loaders/shared/hide_with_above.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "standalone/data/transform_track.h"

namespace standalone {

void HideWithAbove(const eNodeData& above, eNodeData& node) {
    std::set<double> frames;
    for (const eNodeData* record : {&above, static_cast<const eNodeData*>(&node)}) {
        for (const eVisibilityKey& key : record->visibilityKeys) {
            frames.insert(key.frame);
        }
    }
    std::vector<eVisibilityKey> keys;
    for (const double frame : frames) {
        const float value = std::min(VisibilityAt(above, frame), VisibilityAt(node, frame));
        if (keys.empty() || keys.back().value != value) {
            keys.push_back({frame, value});
        }
    }
    node.visibility = std::min(above.visibility, node.visibility);
    node.visibilityKeys = std::move(keys);
}

void AddHiddenWith(const eSceneData& scene, int node, const std::function<bool(int)>& hidesWithAbove,
                   std::vector<int>& nodes) {
    std::vector<int> waiting{node};
    while (!waiting.empty()) {
        const int hidden = waiting.back();
        waiting.pop_back();
        nodes.push_back(hidden);
        std::ranges::copy_if(scene.nodes[static_cast<std::size_t>(hidden)].children,
                             std::back_inserter(waiting), hidesWithAbove);
    }
}

}  // namespace standalone
