#pragma once

#include <string>

#include "host/material.h"
#include "material/export_texture.h"
#include "material/textures/texture_image.h"

class Export;

// What is evaluated into a picture: a map alone where it has a file, else the whole material; without map the
// material's diffuse colour.
struct eTextureSource {
    host::Mtl* material = nullptr;
    host::Texmap* map = nullptr;  // of a bump map with normals: the map of the normals
    eTextureRole role;
    int width = 0;  // pixels
    int height = 0;
};

// The map that the texture's picture is taken from: that of the normals below a Normal Bump map; may be null.
host::Texmap* SourceMap(const eExportTexture& texture);

// The picture, evaluated at the time row by row as it is asked for, while run and source's objects live.
// Sample x of n lies at (x + 1) / (n + 1), so no sample reaches an edge; the map's own tiling and offset do
// not change the picture.
eTextureRows TextureRows(Export& run, const eTextureSource& source, host::TimeValue t);
