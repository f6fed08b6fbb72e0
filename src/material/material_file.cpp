#include "material/material_file.h"

void WriteMaterialFile(eExportResourceSet&, const eName&) {}
