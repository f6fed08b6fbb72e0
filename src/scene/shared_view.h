#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace host {
class INode;
}  // namespace host

// A view that shows the mesh of another node.
struct eSharedView {
    host::INode* node = nullptr;
    host::INode* target = nullptr;
    bool isInstance = false;  // it shares the target's object; else its property "Mesh" names the target
};

// A node whose geometry was read into the mesh of another one.
struct eMeshFeed {
    host::INode* node = nullptr;
    host::INode* target = nullptr;
};

// What became of a node's own mesh.
enum class eMeshFate {
    Shared,     // written where the views of other nodes look for it
    Elsewhere,  // written to the folder of its own model, which others don't see
    Empty,      // it had nothing to write
    Refused,    // what keeps it out of the file has been told
};

// A node whose mesh was written, and the root of the model that it was walked in.
struct eMeshOwner {
    host::INode* node = nullptr;
    host::INode* root = nullptr;
};

// The views and the parts of other nodes' meshes and the meshes written so far: told against each other once
// all models that share a folder have been walked (missing_meshes.h).
struct eSharedMeshes {
    std::vector<eSharedView> views;  // in the order of the walk
    std::vector<eMeshFeed> feeds;    // in the order of the walk
    std::unordered_map<const host::INode*, eMeshFate> fates;
    std::unordered_map<std::string, eMeshOwner> owners;   // by the name of a mesh in the shared set
    std::unordered_set<const host::INode*> toldMirrored;  // whose mesh has a view that is mirrored

    // True if the mesh of the node stands where the views of other nodes look for it.
    bool IsWritten(const host::INode& node) const {
        const auto fate = fates.find(&node);
        return fate != fates.end() && fate->second == eMeshFate::Shared;
    }
};
