#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "inspect/description.h"

namespace inspect {

// A picture of the engine: size, depth, and the mean of each channel.
eDescription DescribeBmp(std::span<const std::uint8_t> bytes, std::string& problem);

}  // namespace inspect
