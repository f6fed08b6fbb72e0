#pragma once

#include <string>

#include "base/bilingual.h"
#include "host/node.h"

namespace answers {

struct eFoundNode {
    host::INode* node = nullptr;  // null: see problem
    eBilingual problem;           // UTF-8
};

// The node of that name, or of that path from the top of the scene ("tank/hull/turret"), letter case ignored;
// with "#2" behind it the second of several, in the order of the scene. A problem names the nearest node, or
// the paths of all that fit. Code page 1251.
eFoundNode FindNode(host::INode& sceneRoot, const std::string& asked);

}  // namespace answers
