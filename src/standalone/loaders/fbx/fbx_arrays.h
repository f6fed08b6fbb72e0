// The numbers of an FBX array. A text file has them behind "a:" with commas between them; a binary file as
// they lie in memory, often packed by deflate.
#pragma once

#include <cstddef>
#include <vector>

#include "standalone/loaders/fbx/fbx_records.h"

namespace standalone {

// Bytes of an element in a binary file; 0 for a letter that begins no array.
std::size_t FbxElementWidth(char letter);

// Empty where the bytes don't hold what the array claims. Takes memory in proportion to the stored bytes, by
// what deflate can pack at most.
std::vector<double> NumbersOf(const eFbxArray& array);

}  // namespace standalone
