#pragma once

class Export;

// Writes one .anm file into the model's folder for each animation of the table that is in range, from the
// frame table and the meshes as they were assembled. Animations that claim one file, lose an end pose to
// another, or have a name that is no file name are told.
void WriteAnimationFiles(Export& run);
