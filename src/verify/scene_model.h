#pragma once

#include <string>

#include "io/name.h"
#include "verify/bone_list.h"

namespace verify {

// A model of the scene and where its files lie.
struct eSceneModel {
    host::INode* root = nullptr;
    eName folder;
    eName sharedFolder;                      // of meshes that models or bones share
    const host::INode* structure = nullptr;  // whose shared folder that is, if any
    bool isStructure = false;
    std::string fault;  // that leaves the model out; empty if there is none
    eBoneList bones;

    // The text of that ending beside the folder's own name: units/tank/tank.mdl.
    eName File(const char* ending) const;
};

}  // namespace verify
