#pragma once

#include "inspect/description.h"
#include "inspect/sdl_tree.h"

namespace inspect {

// A model text: the tree of its bones with joints, views and parameters, its support points, zones, volumes
// with their shapes and sizes, and previews.
eDescription DescribeModel(const eSdlBlock& file);

// An entity definition: placement, nested models, animations, volumes and marks.
eDescription DescribeEntity(const eSdlBlock& file);

}  // namespace inspect
