#pragma once

#include <string>

class Export;

// Writes the block "structure_bone" on defWriter: the values of all keys "Hold" of a model's root.
// `userProps` is the root's text of NormalizeUserProps. Nothing without such a key.
void WriteStructureBone(Export& run, const std::string& userProps);
