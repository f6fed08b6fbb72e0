#pragma once

#include <string>

#include "host/material.h"

// The first file of a map, with lower case, forward slashes, and no "." or ".." in its path; empty if it has
// none. Files that are missing from the disk count with `alsoMissing`.
std::string FirstMapFile(const host::Texmap& map, bool alsoMissing);
