#pragma once

class Export;

// Finds the models of the scene, in the order in which they are exported: the last child of the scene root
// first, and a Structure before the models nested in it, which use its folder. Tells roots that are no model,
// and a scene without any.
void ScanScene(Export& run);
