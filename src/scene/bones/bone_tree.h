#pragma once

#include "host/values.h"

class Export;

namespace host {
class INode;
class Object;
}  // namespace host

// The skeleton has no tree of its own, the hierarchy stays in the host's nodes. The pass below gives each
// node that is a bone its number; the skeleton is written in the same order (bone_writer.h).

// Numbers the node, its detail levels and the bones below it, from `number` on, appends their names to
// boneNames and the lights on the way to sceneLights. In scan mode the nested models of a Structure are added
// to the list of models. Every fault is told: a missing detail level, objects linked to a detail level, equal
// bone names; the result is true if there was one. Linear in the nodes.
bool CollectBones(Export& run, host::INode& node, int& number, bool scanMode);

// Takes the numbers of all passes so far back, so that a node of one model has no number in the next.
void ForgetBoneNumbers(Export& run);

// Appends a model with that root, or tells that the node has neither "Model" nor "XModel".
void AddModel(Export& run, host::INode& root);

// A node that becomes a bone if it is visible, ordinary and no detail level: a group head, or a helper, shape
// or geometry that is no group member. `object` is the node's, evaluated at the time of the static frame.
bool IsBoneCandidate(const host::INode& node, const host::Object* object);

// With an owner, the owner's number. Without, that of the node or, for a group member, of its group head.
// -1 without number.
int NodeIndex(const host::INode& node, const host::INode* owner);

// The node itself or, for a group member, the nearest ancestor that is none.
const host::INode& OutOfGroup(const host::INode& node);

// The nearest proper ancestor that is no group member; it may be the scene root. Null for the scene root.
host::INode* ParentBone(const host::INode& node);
