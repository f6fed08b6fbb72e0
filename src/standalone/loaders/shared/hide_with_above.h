#pragma once

#include <functional>
#include <vector>

#include "standalone/scene_data.h"

namespace standalone {

// Makes the node hidden wherever the one above it is, without keys and with them.
void HideWithAbove(const eNodeData& above, eNodeData& node);

// Adds the node, and those below it that are hidden with it: a take that hides one hides all of them.
void AddHiddenWith(const eSceneData& scene, int node, const std::function<bool(int)>& hidesWithAbove,
                   std::vector<int>& nodes);

}  // namespace standalone
