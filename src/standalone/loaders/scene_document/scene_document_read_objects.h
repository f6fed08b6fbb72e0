// The objects of a scene document: geometry, shapes, cameras, lights and what is none of them.
#pragma once

#include "standalone/loaders/scene_document/scene_document_read_context.h"

namespace standalone {

// An object with its modifiers. Node names are known.
void ReadObject(eDocumentContext& context, eJsonIndex value, eObjectData& object);

}  // namespace standalone
