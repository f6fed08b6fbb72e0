#pragma once

#include "standalone/scene_data.h"

namespace standalone {

// The bounds of an object's points, in its own space; empty for what has none. Of primitives their own sizes
// tell.
host::Box3 BoundsOfPoints(const eObjectKind& kind);

}  // namespace standalone
