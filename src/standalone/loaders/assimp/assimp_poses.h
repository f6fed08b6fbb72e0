#pragma once

#include "standalone/loaders/assimp/assimp_import.h"

namespace standalone {

// The transforms of all nodes, and the keys of those that a take moves: one at each whole frame of the take,
// less those that say nothing new. A node that a take leaves alone stands still through it. Frames and nodes
// that give more keys than any scene is worth are a problem.
void MakeAssimpPoses(eAssimpImport& import);

}  // namespace standalone
