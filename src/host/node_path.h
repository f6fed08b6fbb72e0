// Where a node stands in the tree of the scene.
#pragma once

#include <string>

#include "host/node.h"

namespace host {

// The names from the topmost node, below the scene root, down to this one, with slashes between. Empty for
// the scene root. Code page 1251.
std::string PathOf(const INode& node);

}  // namespace host
