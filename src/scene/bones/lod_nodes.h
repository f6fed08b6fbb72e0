#pragma once

#include <vector>

class Export;

namespace host {
class INode;
}  // namespace host

// Fills the list with the detail levels of the node, by ascending level: its visible ordinary siblings whose
// cleaned name begins with the node's and "_lod". Returns their number. The names of the siblings are read at
// the first question below their parent and kept for the run, so a question costs its answer only.
int FindLodNodes(Export& run, const host::INode& node, std::vector<host::INode*>& details);
