#pragma once

#include "standalone/loaders/assimp/assimp_import.h"

namespace standalone {

// The property text of a node, and the state that some of its user-defined properties say: the whole text
// that its program keeps, as it stands, then a line for each other property, in the file's order. One whose
// key the text has already is left out and told.
void ReadAssimpProperties(eAssimpImport& import, eAssimpNode& node, eNodeData& record);

}  // namespace standalone
