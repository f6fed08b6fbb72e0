#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace host {
class INode;
}  // namespace host

// The nodes that show another node's mesh by the property "Mesh", by that node's name in lower case, each
// list in the order of the scene. Nothing until the scene has been read.
using eMeshViews = std::optional<std::unordered_map<std::string, std::vector<host::INode*>>>;
