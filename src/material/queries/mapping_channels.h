#pragma once

#include <vector>

#include "host/material.h"
#include "host/mesh.h"

class Export;

namespace host {
class INode;
}  // namespace host

// The maps below the face's material, each once, that take their coordinates from the world: the export
// can't, and uses the object's. Has every map load its files. None for a null material.
std::vector<const host::Texmap*> CheckMappingChannels(Export& run, host::Mtl* material,
                                                      const host::Face& face);

// Warns of such a map, with the node that has it and the number of its faces that use it.
void TellMappingChannel(const host::Texmap& map, const host::INode& node, int faces);
