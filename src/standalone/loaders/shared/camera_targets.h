#pragma once

#include <optional>
#include <vector>

#include "standalone/scene_data.h"

namespace standalone {

// A camera in the scene whose target is to be made.
struct eCameraNode {
    int record = 0;                 // in eSceneData::nodes
    std::optional<float> distance;  // that the file tells
};

// Gives each camera of the finished scene a target node beside it on its axis, as it stands at frame 0: at
// the distance told, or where the axis comes nearest to the centre of the scene. The nodes are no longer
// depth first afterwards.
void AddCameraTargets(eSceneData& scene, const std::vector<eCameraNode>& cameras);

}  // namespace standalone
