#pragma once

#include "standalone/scene_data.h"

namespace standalone {

// Puts the nodes into the order that a scene keeps, depth first, after nodes have been added or hung
// elsewhere: `roots`, `children` and `parent` must agree, and every node must hang below a root. All
// references to nodes follow. Linear.
void SortNodesDepthFirst(eSceneData& scene);

}  // namespace standalone
