#pragma once

#include "mesh/strips/strip_adjacency.h"
#include "mesh/strips/strip_list.h"

// Lays strips over all faces: pass after pass, six experiments from each of up to ten seeds, of which the
// first with the longest strips on average is committed. Every face ends in one strip.
//
// Cost: a pass measures each experiment until it can't win any more, which takes the time of the faces it
// walks over; some 20 to 150 steps per face in all on closed and open surfaces, of 1 to 3 nanoseconds each.
eStripList GrowStrips(const eStripAdjacency& adjacency);
