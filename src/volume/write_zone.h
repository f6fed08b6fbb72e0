#pragma once

#include "host/node.h"

class Export;

// Writes the flat figure of a zone on mdlWriter, inside the open zone block: x and y in metres, in the space
// of the model's root with the engine's mirror applied. A sphere or circle gives a circle, any other mesh the
// fitted rectangle around it (with the mark "rotate"), a rectangle shape a rectangle, another shape of one
// line a polygon. A node of another class has no figure; faults are told to the artist.
void WriteZoneShape(Export& run, host::INode& node);
