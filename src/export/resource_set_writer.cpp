#include "export/resource_set_writer.h"

#include "material/material_file.h"
#include "mesh/file/mesh_file.h"

void WriteResourceSet(eExportResourceSet& set, const eName& folder) {
    WriteMaterialFile(set, folder);
    WriteMeshFile(set, folder);
    set = {};
}
