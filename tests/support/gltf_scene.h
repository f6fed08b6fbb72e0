// A glTF text on its way into the host.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "standalone/loaders/gltf/gltf_importer.h"
#include "standalone/objects/scene.h"
#include "support/gltf_text.h"

namespace support {

// All problems as lines in English, for comparing and for messages of tests.
inline std::string ProblemsOf(const standalone::eLoadResult& result) {
    std::string lines;
    for (const standalone::eLoadMessage& problem : result.problems) {
        lines += problem.Line().english + "\n";
    }
    return lines;
}

inline std::vector<std::string> WarningsOf(const standalone::eLoadResult& result) {
    std::vector<std::string> lines;
    for (const standalone::eLoadMessage& warning : result.warnings) {
        lines.push_back(warning.Line().english);
    }
    return lines;
}

inline standalone::eLoadResult Import(const std::string& bytes,
                                      const standalone::eGltfOptions& options = {}) {
    return standalone::ImportGltf("/art/scene.gltf", bytes, options);
}

// The scene of a file that must be good.
inline standalone::eSceneData SceneOf(const std::string& bytes,
                                      const standalone::eGltfOptions& options = {}) {
    standalone::eLoadResult result = Import(bytes, options);
    EXPECT_EQ(ProblemsOf(result), "");
    return result.scene ? std::move(*result.scene) : standalone::eSceneData{};
}

inline const standalone::eNodeData& NodeNamed(const standalone::eSceneData& scene, const std::string& name) {
    for (const standalone::eNodeData& node : scene.nodes) {
        if (node.name == name) {
            return node;
        }
    }
    static const standalone::eNodeData kNone;
    ADD_FAILURE() << "no node " << name;
    return kNone;
}

inline int NumberOf(const standalone::eSceneData& scene, const std::string& name) {
    return static_cast<int>(&NodeNamed(scene, name) - scene.nodes.data());
}

// "1 10+ 24-": the visibility without keys, and the frames from which on a node is shown or hidden.
inline std::string VisibilityOf(const standalone::eNodeData& node) {
    std::string text = std::to_string(static_cast<int>(node.visibility));
    for (const standalone::eVisibilityKey& key : node.visibilityKeys) {
        text.append(" ").append(std::to_string(static_cast<int>(key.frame)));
        text.append(key.value == 0 ? "-" : "+");
    }
    return text;
}

// The object of a node as the kind that it must be.
template <class Kind>
const Kind& ObjectOf(const standalone::eSceneData& scene, const std::string& name) {
    const auto& object = scene.objects[static_cast<std::size_t>(NodeNamed(scene, name).object)];
    static const Kind kNone;
    const Kind* kind = std::get_if<Kind>(&object.kind);
    EXPECT_NE(kind, nullptr) << "the object of " << name << " is of another kind";
    return kind != nullptr ? *kind : kNone;
}

}  // namespace support
