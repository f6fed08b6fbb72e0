#pragma once

#include "inspect/description.h"
#include "inspect/sdl_tree.h"

namespace inspect {

// A model text: the tree of its bones with joints, views and parameters, its support points, zones, volumes
// with their shapes and sizes, and previews.
eDescription DescribeModel(const eSdlBlock& file);

// All that stands in a block: an object with its blocks by name, a line of its values, or true.
eDescription DescribeBlock(const eSdlBlock& block);

// Adds a block to what is said of the one around it. Values beside blocks go to the name, and so do those of
// a second block of one name.
void AddBlock(eDescription& description, const eSdlBlock& block);

// An entity definition: placement, nested models, animations, volumes and marks.
eDescription DescribeEntity(const eSdlBlock& file);

}  // namespace inspect
