#pragma once

#include <vector>

#include "verify/scene_model.h"

namespace verify {

// The models of the scene, in the order in which an export comes to them, with their bones and folders.
// `scanLights` gets the lights that are met while Structures are looked through for their models: they count
// from the start, and once more where their own model is read.
std::vector<eSceneModel> FindModels(const eVerifiedScene& scene, std::vector<host::INode*>& scanLights);

}  // namespace verify
