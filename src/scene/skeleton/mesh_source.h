#pragma once

class Export;
class eMeshStage;
struct eBoneStep;

// Where the mesh of a bone comes from and where it goes: the steps of the bone writer around its geometry.

// Settles whose mesh the node shows and whose merged mesh it feeds, and sizes the frames of its mesh. False,
// with a message, if a node that the properties name can't serve.
bool FindMeshSource(Export& run, eBoneStep& step);

// Enters the node into its slot of `bones`.
void FillSlot(Export& run, const eBoneStep& step);

// Settles the name of the mesh, whether the node asks for one, and the set that it is written to.
void ChooseMeshSet(Export& run, eBoneStep& step);

// Tells a part of a group that asks for a mesh while the group has none: a group has one mesh, that of its
// head.
void TellMemberWithoutMesh(Export& run, const eBoneStep& step);

// Writes the mesh that the node and all below it have gathered, if this node is the one to write it.
void WriteOwnMesh(Export& run, eMeshStage& meshStage, const eBoneStep& step);
