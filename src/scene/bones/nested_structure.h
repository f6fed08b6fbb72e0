#pragma once

namespace host {
class INode;
}  // namespace host

// True if the node is a model that keeps a common folder for the models nested in it.
bool IsStructure(const host::INode& node);

// The nearest Structure above the node; null if there is none.
const host::INode* EnclosingStructure(const host::INode& node);
