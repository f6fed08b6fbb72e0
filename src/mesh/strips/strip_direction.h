#pragma once

#include <span>

#include "mesh/strips/strip_list.h"

// Whether the strip runs through its first face in the direction of the face's winding. `strip` has a face.
bool StartsClockwise(std::span<const eStripTriangle> strip);
