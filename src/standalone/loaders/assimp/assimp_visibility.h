#pragma once

#include "standalone/loaders/assimp/assimp_import.h"

namespace standalone {

// Sets the visibility of the nodes, which only an FBX file moves and which the library doesn't hand on, and
// adds the nodes to the takes that move it. Takes and nodes must have been laid out.
void SetAssimpVisibility(eAssimpImport& import);

}  // namespace standalone
