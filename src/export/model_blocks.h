#pragma once

class Export;

// Writes what hangs on the current model beside its skeleton, in the order of the files: support points,
// zones, volumes, previews and the land patch.
void WriteModelBlocks(Export& run);
