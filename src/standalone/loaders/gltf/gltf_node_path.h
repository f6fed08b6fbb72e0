#pragma once

#include <vector>

#include "standalone/load_message.h"
#include "standalone/loaders/json/json_tree.h"

namespace standalone {

// Gives each problem that stands at a node of the file ("/nodes/3/mesh") the path of that node. The document
// may be broken in any way.
void NameGltfNodes(const eJsonTree& json, std::vector<eLoadMessage>& problems);

}  // namespace standalone
