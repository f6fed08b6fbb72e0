#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace host {
class INode;
}  // namespace host

// The children of one parent that may be detail levels, by the cleaned name in front of a "_lod" in theirs;
// the last child comes first.
using eLodSiblings = std::unordered_map<std::string, std::vector<host::INode*>>;

// What the run has read of names so far, by parent.
using eLodIndex = std::unordered_map<const host::INode*, eLodSiblings>;
