#pragma once

class Export;

// Writes the .anm file of each animation of the table that is in range, from the frame table.
void WriteAnimationFiles(Export& run);
