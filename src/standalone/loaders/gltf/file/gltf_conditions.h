#pragma once

#include "standalone/loaders/json/json_tree.h"
#include "standalone/loaders/shared/import_report.h"

namespace standalone {

// What must hold between the members of a glTF file whose form has been checked: the version, the extensions
// that it requires, parts that a type demands, views within their buffers. After this the library reads the
// file as it stands.
void CheckGltfConditions(const eJsonTree& json, eImportReport& report);

}  // namespace standalone
