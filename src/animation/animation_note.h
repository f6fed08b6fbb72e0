#pragma once

#include "io/name.h"

class Export;
struct eExportAnimation;

// Notes the animation of the current model as it was written to the file, an empty path for none. Nothing
// where nobody asks; else a pass over its frames.
void NoteAnimation(Export& run, const eExportAnimation& animation, const eName& file);
