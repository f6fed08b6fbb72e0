// What a look at a scene tells before its export, beside what the run itself tells: slips that the run can't
// know to be any.
#pragma once

#include <vector>

#include "messages/message.h"

class Export;

namespace answers {

// Advice on all nodes of the run's scene, node by node in the order of the scene, and on its animations.
// Changes nothing; the host and the options of the run must be settled. Cost: one pass over the properties
// and the meshes at the static frame.
std::vector<eMessage> LintScene(Export& run);

}  // namespace answers
