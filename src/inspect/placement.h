#pragma once

#include "host/values.h"
#include "inspect/sdl_tree.h"

namespace inspect {

// Where a bone or a solid of a model text stands in what it hangs from, in metres: from its "matrix34",
// "orientation" and "Position", or the identity.
host::DMatrix3 PlacementOf(const eSdlBlock& block);

}  // namespace inspect
