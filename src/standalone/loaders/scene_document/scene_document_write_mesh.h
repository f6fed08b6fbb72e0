// The triangle mesh of a scene document.
#pragma once

#include "standalone/loaders/json/json_writer.h"

namespace standalone {

// The members of a mesh object but its type.
void WriteMesh(eJsonWriter& json, const eMeshObject& object);

}  // namespace standalone
