#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace host {
class INode;
}  // namespace host

// A view that shows the mesh of another node.
struct eSharedView {
    host::INode* node = nullptr;
    host::INode* target = nullptr;
};

// What became of a node's own mesh.
enum class eMeshFate {
    Shared,     // written where the views of other nodes look for it
    Elsewhere,  // written to the folder of its own model, which others don't see
    Empty,      // it had nothing to write
};

// A node whose mesh was written, and the root of the model that it was walked in.
struct eMeshOwner {
    host::INode* node = nullptr;
    host::INode* root = nullptr;
};

// The views of other nodes' meshes and the meshes written so far: told against each other once all models
// that share a folder have been walked (missing_meshes.h).
struct eSharedMeshes {
    std::vector<eSharedView> views;  // in the order of the walk
    std::unordered_map<const host::INode*, eMeshFate> fates;
    std::unordered_map<std::string, eMeshOwner> owners;  // by the name of a mesh in the shared set
};
