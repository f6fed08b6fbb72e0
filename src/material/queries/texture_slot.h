#pragma once

#include "host/material.h"

// What a slot takes its map for. One map may stand in several places of a material, so that the map alone
// does not tell.
enum class eSlotUse { Color, Bump, SpecularLevel };

struct eSlotTexmap {
    host::Texmap* map = nullptr;  // may be null
    eSlotUse use = eSlotUse::Color;
};

// What fills texture slot 0, 1 or 2 of a material. Slot 1 goes to the bump map first, then to the specular
// level map, and only then to the second layer; the slots behind it to the specular level map.
eSlotTexmap GetSlotTexmap(host::Mtl* material, int slot);
