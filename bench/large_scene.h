// The large scene by which loading and export are measured: one model, a root with chains of helpers below
// it, ten levels in all, twenty property lines a node. The same number of nodes gives the same scene.
#pragma once

#include <string>

#include "standalone/loaders/scene_document/scene_document_writer.h"
#include "standalone/scene_data.h"

namespace bench {

inline constexpr int kLevels = 10;
inline constexpr int kPropertyLines = 20;

inline std::string LargeSceneProperties(int node) {
    std::string text = node == 0 ? "Model=bench/large" : "IKType=revolute";
    text += "\r\nIKMin=-0,5\r\nIKMax=1,25\r\nspeed=1,5";
    for (int line = 4; line < kPropertyLines; ++line) {
        text += "\r\nparameter_" + std::to_string(line) + "=value " + std::to_string(node * 31 + line);
    }
    return text;
}

inline standalone::eSceneData LargeScene(int nodeCount) {
    standalone::eSceneData scene;
    for (int node = 0; node < nodeCount; ++node) {
        // A new chain below the root begins when the last one has reached the lowest level.
        const int parent = node == 0 ? -1 : (node - 1) % (kLevels - 1) == 0 ? 0 : node - 1;
        standalone::eNodeData data{.name = "node_" + std::to_string(node),
                                   .properties = LargeSceneProperties(node)};
        data.parent = parent;
        data.transform.parts.position = {static_cast<float>(node % 100) * 1.5F, 2.25F, 0.125F};
        data.object = static_cast<int>(scene.objects.size());
        scene.objects.push_back({"", standalone::eHelperObject{}, {}});
        scene.nodes.push_back(std::move(data));
        if (parent < 0) {
            scene.roots.push_back(node);
        } else {
            scene.nodes[static_cast<std::size_t>(parent)].children.push_back(node);
        }
    }
    return scene;
}

inline std::string LargeSceneDocument(int nodeCount) {
    return standalone::WriteSceneDocument(LargeScene(nodeCount), "").text;
}

}  // namespace bench
