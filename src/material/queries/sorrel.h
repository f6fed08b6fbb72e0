#pragma once

#include "host/material.h"

// What a Sorrel material adds to the one that it wraps; the defaults are those of any other material.
struct eSorrelParameters {
    int blend = -1;  // 0 "none", 1 "test", 2 "blend", 3 "add", 4 "sub", else automatic
    int modulate2x = 0;
    int environment = 0;  // non-zero: an envmap material
    float strength = 0;   // of the environment map
    host::Texmap* mask = nullptr;
    host::Texmap* environmentMap = nullptr;
};

// At time 0.
eSorrelParameters ReadSorrelParameters(const host::Mtl* material);
