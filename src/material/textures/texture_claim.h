#pragma once

#include "material/export_texture.h"

class Export;

// Notes that the material's texture is about to be written. Names are made from file names and counters, so
// two textures can claim one name, and one picture can be wanted in two forms under it: the artist is told
// both materials and maps. False if the file belongs to an earlier form of the same picture, which stays.
bool ClaimTexture(Export& run, const eExportTexture& texture, host::Mtl* material);
