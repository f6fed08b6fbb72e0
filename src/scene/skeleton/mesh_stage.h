#pragma once

#include "io/name.h"

class Export;
struct eExportResourceSet;

namespace host {
class INode;
}  // namespace host

// What the walk over a model's nodes asks of the stages behind it: geometry and samples are read on the way
// down, a mesh is complete and written on the way back. The walk knows no more of meshes than this.
class eMeshStage {
public:
    virtual ~eMeshStage() = default;

    // Before the node's children: appends the node's geometry to the mesh of its bone and samples its
    // animations. `meshTarget` is the node whose mesh this one shows, `commonTarget` the node whose merged
    // mesh it feeds; both may be null. The node has a bone number (FindBoneIndex).
    virtual void ExtractNodeMesh(Export& run, host::INode& node, host::INode* meshTarget,
                                 host::INode* commonTarget) = 0;

    // After the node's children: adds the mesh of the bone to the set under the name. False if the mesh has
    // nothing to write; the set is then as it was.
    virtual bool WriteMesh(Export& run, eExportResourceSet& set, const eName& name, int boneIndex) = 0;
};
