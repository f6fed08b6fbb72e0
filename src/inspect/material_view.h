#pragma once

#include "inspect/description.h"
#include "inspect/sdl_tree.h"

namespace inspect {

// A material file: per material its kind, textures and keys.
eDescription DescribeMaterials(const eSdlBlock& file);

}  // namespace inspect
