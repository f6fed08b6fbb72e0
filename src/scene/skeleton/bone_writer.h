#pragma once

#include <cstdint>

#include "scene/skeleton/bone_step.h"

class Export;
class eMeshStage;

namespace host {
class INode;
}  // namespace host

// The one walk over a model's nodes, in the order of their numbers (bone_tree.h). It writes the bone blocks
// on mdlWriter, fills `bones`, puts the nodes that are no bones onto the lists of the current model, and
// calls the mesh stage at each node. `commonTarget` is the node whose merged mesh the group around the node
// feeds, or null; `flags` are eBoneWriteFlags.
//
// False stops the walk: the user has cancelled, or a fault has been told that leaves the rest without a
// meaning. Every block that was open is closed on the way up.
bool WriteBone(Export& run, eMeshStage& meshStage, host::INode& node, host::INode* commonTarget,
               std::uint32_t flags);
