#pragma once

#include <vector>

class Export;

namespace host {
class INode;
}  // namespace host

// Writes the block "preview" on mdlWriter: the cameras and lights of each group in the list.
void WritePreviewBlock(Export& run, const std::vector<host::INode*>& previews);
