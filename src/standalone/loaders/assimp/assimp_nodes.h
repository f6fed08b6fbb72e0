#pragma once

#include "standalone/loaders/assimp/assimp_import.h"

namespace standalone {

// Fills the nodes of the import and their records: name, properties, state, place in the tree. Nothing of
// their transforms yet.
void MakeAssimpNodes(eAssimpImport& import);

// All nodes, each behind its parent.
std::vector<int> ParentsFirst(const eAssimpImport& import);

// A skinned mesh that stands at the root of the scene, away from its bones (some exporters put it there),
// goes back to where the bones hang, if they belong to a model and it is none of its own. Before frames and
// transforms are worked out.
void GatherSkinnedMeshes(eAssimpImport& import);

}  // namespace standalone
