// The triangle mesh of a scene document.
#pragma once

#include "standalone/loaders/json/json_reader.h"

namespace standalone {

// A mesh that holds what host::Mesh promises: every index in its table but those of the vertex alpha channel,
// one map face per face.
void ReadMesh(eJsonReader& json, eMembers& members, eMeshObject& mesh);

}  // namespace standalone
