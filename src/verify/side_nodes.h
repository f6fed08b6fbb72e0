#pragma once

#include <vector>

#include "verify/scene_model.h"

namespace verify {

// What hangs on a model beside its bones, as far as the bones lead to it.
struct eSideNodes {
    std::vector<host::INode*> volumes;   // by name; of those whose cleaned names are one the first
    std::vector<host::INode*> zones;     // by name
    std::vector<host::INode*> supports;  // in the order of the tree
    std::vector<host::INode*> previews;
    bool isLand = false;  // some node has the property "Land"
};

eSideNodes FindSideNodes(const eVerifiedScene& scene, const eSceneModel& model);

}  // namespace verify
