#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "verify/verified_scene.h"

namespace verify {

struct eSceneBone {
    host::INode* node = nullptr;
    std::string name;
    int level = 0;  // of detail
};

// The bones that a model should have, by number, and the lights that are met on the way.
struct eBoneList {
    std::vector<eSceneBone> bones;
    std::unordered_map<const host::INode*, int> numbers;
    std::unordered_map<const host::INode*, std::vector<host::INode*>> details;  // levels, nearest first
    std::vector<host::INode*> lights;
    std::string fault;  // that leaves the model out; empty if there is none

    // -1 for a node that is no bone.
    int NumberOf(const host::INode& node) const;
};

// `isStructure`: the models below the root are models of their own.
eBoneList ListBones(const eVerifiedScene& scene, host::INode& root, bool isStructure);

// A group head, or a helper, shape or geometry outside a group, at the static frame.
bool MayBeBone(const eVerifiedScene& scene, host::INode& node);

// The nearest node above that is no group member.
host::INode* BoneAbove(const host::INode& node);

}  // namespace verify
