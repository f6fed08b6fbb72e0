#pragma once

#include "io/name.h"
#include "run/resource_set.h"

// Writes ".material" in the folder, the records in natural order of their names. Nothing to do for a set
// without materials; an older file stays then.
void WriteMaterialFile(eExportResourceSet& set, const eName& folder);
