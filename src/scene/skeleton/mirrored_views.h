#pragma once

#include "host/values.h"

class Export;

namespace host {
class INode;
}  // namespace host

// True if the node is mirrored against `owner`, so that the mesh of the one can't serve the other.
bool IsMirroredAgainst(host::INode& node, host::INode& owner, host::TimeValue t);

// Warns that a node which shows the mesh of `owner` is mirrored against it; once for each mesh.
void TellMirroredView(Export& run, const host::INode& owner);

// Warns of the meshes that an instance of their node shows and that is mirrored against it. Called when the
// views have been gathered, before TellMissingMeshes forgets them.
void TellMirroredInstances(Export& run);
