#pragma once

#include <cstdint>
#include <vector>

#include "standalone/loaders/gltf/gltf_import.h"

namespace standalone {

// The lines of a mesh of the file as splines, in the host's axes: each chain of segments that hang together
// by the places of their ends is one, closed where its last point meets its first. Chains end where more than
// two segments meet. A chain runs in the direction of its first segment in the file.
std::vector<eSpline> ReadGltfLines(eGltfImport& import, int mesh);

}  // namespace standalone
