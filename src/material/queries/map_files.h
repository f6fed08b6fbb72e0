#pragma once

#include <string>
#include <vector>

#include "host/material.h"

// The first file of a map, with lower case, forward slashes, and no "." or ".." in its path; empty if it has
// none. Files that are missing from the disk count with `alsoMissing`.
std::string FirstMapFile(const host::Texmap& map, bool alsoMissing);

// Every path where the host has looked for that file, as the disk spells it; empty where the host does not
// say.
std::vector<std::string> TriedMapPaths(const host::Texmap& map);
