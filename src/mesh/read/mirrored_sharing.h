#pragma once

class Export;

namespace host {
class INode;
}  // namespace host

// True if a node that shows the mesh of `owner` by the property "Mesh" is mirrored against it, so that the
// one mesh can't serve both. Nodes below one that shows the mesh are not looked at. The first question of a
// run reads the scene, each one then costs what the nodes that show the mesh do.
bool IsSharedMirrored(Export& run, host::INode& owner);
