#pragma once

#include <cstdint>
#include <span>

#include "diff/change.h"

namespace diff {

// Clips by their length and their bones: in the frames that both have, how far each bone is from where it
// was in the bone above it, how far it is turned, and whether it is seen; and the vertices of meshes animated
// by frames. The problem says why a side can't be read, and is empty if both can.
void CompareClips(std::span<const std::uint8_t> before, std::span<const std::uint8_t> after,
                  const eTolerances& tolerances, eChanges& changes, eBilingual& problem);

}  // namespace diff
