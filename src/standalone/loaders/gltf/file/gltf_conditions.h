#pragma once

#include "standalone/loaders/gltf/file/gltf_report.h"
#include "standalone/loaders/json/json_tree.h"

namespace standalone {

// What must hold between the members of a glTF file whose form has been checked: the version, the extensions
// that it requires, parts that a type demands, views within their buffers. After this the library reads the
// file as it stands.
void CheckGltfConditions(const eJsonTree& json, eGltfReport& report);

}  // namespace standalone
