#pragma once

#include <vector>

#include "standalone/scene_data.h"

namespace standalone {

// Segments, two points each, as splines: each chain of segments that hang together by the places of their
// ends is one, closed where its last point meets its first. Chains end where more than two segments meet. A
// chain runs in the direction of its first segment.
std::vector<eSpline> ChainSegments(const std::vector<host::Point3>& ends);

}  // namespace standalone
