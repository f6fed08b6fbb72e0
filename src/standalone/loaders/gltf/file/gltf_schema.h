#pragma once

#include "standalone/loaders/json/json_tree.h"
#include "standalone/loaders/shared/import_report.h"

namespace standalone {

// Holds the JSON text of a glTF file against the form that the format gives it, as far as the import reads
// it: types, required members, words, and every number of an entry in a list. What passes can be read without
// looking again. Members that nobody reads are not looked at.
void CheckGltfForm(const eJsonTree& json, eImportReport& report);

}  // namespace standalone
