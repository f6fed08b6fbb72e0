#pragma once

#include "host/material.h"
#include "host/mesh.h"

class Export;

// Warns of every map below the face's material that takes its coordinates from the world: the export can't,
// and uses the object's. Told once per map and face; true if there was one. A null material has nothing to
// tell.
bool CheckMappingChannels(Export& run, host::Mtl* material, const host::Face& face);
