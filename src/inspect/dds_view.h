#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "inspect/description.h"

namespace inspect {

// A compressed texture: its size, pixel format, and levels. A problem, with its byte offset, if the header
// does not fit what the file holds.
eDescription DescribeDds(std::span<const std::uint8_t> bytes, std::string& problem);

}  // namespace inspect
