#pragma once

#include "host/material.h"

// The map that fills texture slot 0, 1 or 2 of a material, or null. Slot 1 goes to the bump map first, then
// to the specular level map, and only then to the second layer; the slots behind it to the specular level
// map.
host::Texmap* GetSlotTexmap(host::Mtl* material, int slot);
