#pragma once

#include "standalone/loaders/assimp/assimp_import.h"

namespace standalone {

// Frames a second that the file names, 30 without.
double OwnFrameRate(const eAssimpImport& import);

// A frame within a thousandth of a whole one is that one.
double WholeFrame(double frame);

// Lays the takes of the file on the timeline: each where it has its own times, if that is behind all earlier
// takes, else there, with one empty frame in front of it. The range of the scene covers them all.
void LayOutAssimpTakes(eAssimpImport& import);

}  // namespace standalone
