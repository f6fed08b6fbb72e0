#pragma once

#include "mesh/strips/strip_list.h"

// Cuts strips with more than `limit` real faces into pieces of `limit`. One, two or three real faces left
// over at the end go to the last piece, more of them make a piece of their own.
eStripList CutStrips(const eStripList& strips, std::size_t limit);
