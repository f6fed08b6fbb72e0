#pragma once

#include <unordered_map>
#include <unordered_set>

namespace host {
class INode;
}  // namespace host

// The nodes of named selection sets, by the host's index of the set.
using eSelectionMembers = std::unordered_map<int, std::unordered_set<const host::INode*>>;
