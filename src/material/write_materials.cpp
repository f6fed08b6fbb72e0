#include "material/write_materials.h"

void WriteMaterials(Export&, bool) {}
