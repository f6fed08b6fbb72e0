// The node tree of a scene document.
#pragma once

#include "standalone/loaders/scene_document/scene_document_read_context.h"

namespace standalone {

// Makes the node records depth first, with their names and places in the tree, and the table of names.
void CollectNodes(eDocumentContext& context, eJsonIndex list);

// Reads everything else of the nodes that were collected. Ids of objects and materials are known.
void ReadNodes(eDocumentContext& context);

}  // namespace standalone
