// The materials of a scene document.
#pragma once

#include "standalone/loaders/scene_document/scene_document_read_context.h"

namespace standalone {

// Fills the records that stand in the scene already, one per material; the ids are known.
void ReadMaterials(eDocumentContext& context, const eJsonChildren& section);

}  // namespace standalone
