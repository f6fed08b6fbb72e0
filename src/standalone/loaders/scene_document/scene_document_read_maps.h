// The texture maps of a scene document.
#pragma once

#include "standalone/loaders/scene_document/scene_document_read_context.h"

namespace standalone {

// A map with all maps below it, appended to those of the scene. The result is its number, -1 where the
// document has something else.
int ReadMap(eDocumentContext& context, eJsonIndex value);

}  // namespace standalone
