#pragma once

#include "host/values.h"

class Export;
struct eExportBone;

namespace host {
class INode;
}  // namespace host

// The bone that the node's geometry goes to; null if it has no number or no mesh.
eExportBone* BoneOfMesh(Export& run, const host::INode& node, const host::INode* commonTarget);

// Reads the geometry of the node as it stands at the time into frame `meshFrame` of its bone's mesh:
// positions in metres and normals in the bone's space, map coordinates, vertex colour with baked light,
// alpha, and in frame 0 faces, materials and skin. Hidden faces are left out, a mirrored node's faces are
// turned round. What can't be read is told and leaves the mesh without this node. Nothing to do where the
// mesh has no such frame. Linear in vertices and faces.
void ExtractMesh(Export& run, host::INode& node, host::TimeValue time, host::INode* commonTarget);
