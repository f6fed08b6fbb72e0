#pragma once

#include <memory>
#include <string>
#include <vector>

#include "standalone/loaders/gltf/file/gltf_accessor.h"
#include "standalone/loaders/gltf/gltf_axes.h"
#include "standalone/loaders/gltf/gltf_curve.h"
#include "standalone/loaders/gltf/gltf_extras.h"
#include "standalone/loaders/gltf/gltf_hierarchy.h"
#include "standalone/loaders/json/json_tree.h"
#include "standalone/scene_data.h"

namespace standalone {

// A node of the file on its way into the scene.
struct eGltfNode {
    int record = -1;  // number in eSceneData::nodes; -1 for a node outside the scene shown
    bool keepsOwnAxes = false;
    eShapeWord shape = eShapeWord::None;
};

// A camera in the scene.
struct eGltfCameraNode {
    int node = 0;    // in the file
    int camera = 0;  // in the file
    int record = 0;  // in eSceneData::nodes
};

// What the steps of an import share: the file as it was read, and the scene as far as it is made.
struct eGltfImport {
    const tinygltf::Model& model;
    const eJsonTree& json;
    const eGltfAccessors& accessors;
    const eGltfHierarchy& hierarchy;
    eImportReport& report;
    std::string path;    // of the file, UTF-8
    std::string folder;  // of the file, UTF-8

    eSceneData scene{};
    std::vector<eGltfNode> nodes{};         // by number in the file
    std::vector<eGltfNodeCurves> curves{};  // by number in the file
    std::vector<eGltfCameraNode> cameraNodes{};
    std::size_t cornerCount = 0;     // of all meshes made so far
    std::size_t vertexKeyCount = 0;  // points in them, of all meshes made so far

    eGltfNode& NodeOf(int node) { return nodes[static_cast<std::size_t>(node)]; }
    eNodeData& RecordOf(int node) { return scene.nodes[static_cast<std::size_t>(NodeOf(node).record)]; }
    bool KeepsOwnAxes(int node) const {
        return node >= 0 && nodes[static_cast<std::size_t>(node)].keepsOwnAxes;
    }
    eAxes AxesOf(int node) const {
        return {KeepsOwnAxes(node), KeepsOwnAxes(hierarchy.parents[static_cast<std::size_t>(node)])};
    }
};

}  // namespace standalone
