#pragma once

class Export;

// The walk over the bones of the current model and all that is written by it or right behind it: the block
// "skeleton" of the .mdl, "structure" of a Structure's .def, meshes, samples, materials, and the animation
// block of the .def.
void WriteSkeletonBlock(Export& run);
