#pragma once

#include <vector>

#include "host/node.h"

class Export;

// Writes the block "preview" on mdlWriter: per group node its camera and its lights, read at time 0 in the
// space of the model's root with the engine's mirror applied; positions in metres. A node that is no group
// head, and every camera behind the first of a group, is told and left out.
void WritePreviewBlock(Export& run, const std::vector<host::INode*>& previews);
