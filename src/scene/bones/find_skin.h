#pragma once

namespace host {
class INode;
class Modifier;
}  // namespace host

// The skin modifier of the node: of several in its stack the one nearest to the base object. Null without
// one, and for a node with the property "NoSkin".
host::Modifier* FindSkin(const host::INode& node);

// The number of the bone that the node's geometry goes to: that of `commonTarget` if there is one, else that
// of the node or, for a group member, of its group head. -1 if the bone has no number.
int FindBoneIndex(const host::INode& node, const host::INode* commonTarget);
