#pragma once

#include <optional>
#include <vector>

#include "standalone/loaders/gltf/shapes/gltf_skin.h"

namespace standalone {

// How a node shows its mesh.
struct eGltfMeshUse {
    std::optional<eGltfSkin> skin;
    std::vector<float> weights;          // of the morph targets, at rest
    const eGltfCurve* motion = nullptr;  // of the weights, null where nothing moves them
    bool isOwn = false;                  // in a way of its own, so that no other node can share the object
};

// `worlds` are those of GltfWorldMatrices.
eGltfMeshUse GltfMeshUse(eGltfImport& import, int node, const std::vector<host::Matrix3>& worlds);

// The object of a mesh: a mesh, or a shape where the file has only lines; a helper where there is nothing
// that the host could show.
eObjectData MakeGltfMeshObject(eGltfImport& import, int mesh, const eGltfMeshUse& use);

}  // namespace standalone
