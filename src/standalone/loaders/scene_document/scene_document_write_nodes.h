// The node tree of a scene document.
#pragma once

#include "standalone/loaders/scene_document/scene_document_write_context.h"

namespace standalone {

// The list of the scene's roots with all below them, without recursion.
void WriteNodes(eDocumentOutput& output);

}  // namespace standalone
