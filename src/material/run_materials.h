#pragma once

#include "material/export_texture.h"
#include "material/material_map.h"

// What the material stage gathers.
struct eRunMaterials {
    eExportMaterialMap materialMap;  // of the current model
    eTextureClaims textureClaims;    // of the whole run
};
