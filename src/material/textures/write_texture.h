#pragma once

#include "host/material.h"
#include "material/export_texture.h"

class Export;

// True if the target has to be made from the source: the source exists, and the target does not or is older.
bool IsNewer(const std::string& source, const std::string& target);

// Puts the file of one slot at its target path. A picture that the engine reads is copied, a bump map becomes
// a .dds of normals, anything else is evaluated into a .bmp: of the picture's own size, or `width` by
// `height` for a procedural map, or 2 by 2 for a plain colour. Files of pictures that are up to date are left
// alone. A map whose file is missing writes nothing; what can't be read or written is told, and no half file
// stays.
void WriteTexture(Export& run, const eExportTexture& texture, host::Mtl* material, int width, int height,
                  host::TimeValue t);
