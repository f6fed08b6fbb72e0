#pragma once

#include "io/name.h"
#include "run/resource_set.h"

class Export;

// Writes the set into the folder: ".material", then ".mesh", each if there is something for it. The set is
// empty afterwards and can be filled for the next folder.
void WriteResourceSet(Export& run, eExportResourceSet& set, const eName& folder);
