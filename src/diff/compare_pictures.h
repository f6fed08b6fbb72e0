#pragma once

#include <cstdint>
#include <span>

#include "diff/change.h"

namespace diff {

// Pictures of any kind by their first level: their size, or how near they are over all channels in decibels
// of peak signal to noise. The problem says why a side can't be read, and is empty if both can.
void ComparePictures(std::span<const std::uint8_t> before, std::span<const std::uint8_t> after,
                     const eTolerances& tolerances, eChanges& changes, eBilingual& problem);

}  // namespace diff
