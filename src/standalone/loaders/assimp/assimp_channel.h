#pragma once

#include <assimp/anim.h>

#include "host/values.h"

namespace standalone {

// The transform that a channel has at a time in its ticks: linear between keys, rotations by the shorter
// great arc; the nearest key before the first and behind the last.
host::Matrix3 ChannelMatrix(const aiNodeAnim& channel, double ticks);

}  // namespace standalone
