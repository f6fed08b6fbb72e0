// The materials and maps of a scene document.
#pragma once

#include "standalone/loaders/scene_document/scene_document_write_context.h"

namespace standalone {

void WriteMaterials(eDocumentOutput& output);

}  // namespace standalone
