#pragma once

#include "host/node.h"

class Export;

// Writes one volume of the current model: shape, parent bone and matrix on mdlWriter, gameplay tags on
// defWriter; both writers stand inside their blocks "volumes". A box, sphere or cylinder of the host stays
// one, any other geometry becomes a polyhedron, which ought to be convex. Faults are told to the artist; a
// volume without triangles, or with more vertices than a polyhedron's indices reach, leaves two empty blocks.
void WriteVolume(Export& run, host::INode& node);
