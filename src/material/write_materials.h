#pragma once

class Export;

// Turns the materials in use by the current model into records, and writes their textures. The records go to
// commonResources with `useCommon`, else to modelResources.
void WriteMaterials(Export& run, bool useCommon);
