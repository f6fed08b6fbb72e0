#pragma once

#include <set>
#include <string>

#include "material/export_texture.h"
#include "material/material_map.h"

// What the material stage gathers.
struct eRunMaterials {
    eExportMaterialMap materialMap;  // of the current model
    eTextureClaims textureClaims;    // of the whole run
    // Where the run has written textures that other runs may write at the same time.
    std::set<std::string> sharedFolders;
};
