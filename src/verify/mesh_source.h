#pragma once

#include <map>
#include <string>
#include <vector>

#include "verify/scene_model.h"

namespace verify {

// A mesh that a file should hold.
struct eSceneMesh {
    std::string name;                   // in the table of the file
    eName folder;                       // of the file
    host::INode* owner = nullptr;       // in whose space it stands
    std::vector<host::INode*> feeders;  // whose triangles it holds, in the order of the walk
    bool hasFrames = false;             // animated by frames
};

// Which meshes a walk down a model finds.
struct eMeshSources {
    std::vector<eSceneMesh> meshes;
    std::map<std::string, int> leftOut;  // nodes with triangles that no file gets, by reason
};

// Walks down the model as its skeleton shows it.
eMeshSources FindMeshSources(const eVerifiedScene& scene, const eSceneModel& model);

}  // namespace verify
