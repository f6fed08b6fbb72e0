// The objects of a scene document.
#pragma once

#include "standalone/loaders/scene_document/scene_document_write_context.h"

namespace standalone {

void WriteObject(eDocumentOutput& output, const eObjectData& object);

}  // namespace standalone
