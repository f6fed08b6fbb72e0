#pragma once

#include "host/node.h"

class Export;

// The gameplay tags that a node's properties carry on to the engine: those of a zone on mdlWriter, those of a
// volume on defWriter. Values that the files can't hold as they are written are told.
void WriteObstacleTags(Export& run, const host::INode& node, bool isVolume);
