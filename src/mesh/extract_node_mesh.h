#pragma once

class Export;

namespace host {
class INode;
}  // namespace host

// Reads the geometry of the node, at the static frame and at every frame of a mesh animated by frames, into
// the mesh of its bone (FindBoneIndex), and samples the node's animations where it is a bone. `meshTarget` is
// the node whose mesh this one shows, `commonTarget` the node whose merged mesh it feeds; both may be null.
void ExtractNodeMesh(Export& run, host::INode& node, host::INode* meshTarget, host::INode* commonTarget);
