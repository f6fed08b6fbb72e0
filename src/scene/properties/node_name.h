#pragma once

#include <string_view>

#include "io/clean_name.h"

namespace host {
class INode;
}  // namespace host

// The level of detail that a node's name tells: the number behind the first "_lod", 0 without one.
int GetLodLevel(const host::INode& node);
// The same for a name that is cleaned already, with the suffixes cut off.
int LodLevelOfName(std::string_view cleanedName);
