#pragma once

#include "geometry/export_mesh.h"
#include "host/values.h"
#include "material/material_map.h"

// Moves the rough size of the material's generated textures towards what one triangle needs: texels per unit
// of texture, from the lengths of the edges in metres. A running mean that favours the last triangles, below
// 256.
void EstimateTextureSize(eExportMaterialUse& use, const eCorners<host::Point3>& positions,
                         const eCorners<host::Point2>& mapCoords);
