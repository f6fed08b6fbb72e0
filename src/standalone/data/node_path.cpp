#include "standalone/data/node_path.h"

namespace standalone {

std::string PathOfNode(const eSceneData& scene, std::size_t node) {
    std::string path;
    for (int step = static_cast<int>(node); step >= 0;
         step = scene.nodes[static_cast<std::size_t>(step)].parent) {
        path = scene.nodes[static_cast<std::size_t>(step)].name + (path.empty() ? "" : "/") + path;
    }
    return path;
}

}  // namespace standalone
