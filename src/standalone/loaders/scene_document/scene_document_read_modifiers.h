// The modifiers of an object in a scene document.
#pragma once

#include "standalone/loaders/scene_document/scene_document_read_context.h"

namespace standalone {

// The list from the top of the stack down. The object's kind is read already.
void ReadModifiers(eDocumentContext& context, eJsonIndex list, eObjectData& object);

}  // namespace standalone
