#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "inspect/description.h"

namespace inspect {

// An animation file: its frames, and per bone the records, the keys kept of the frames sampled, the bytes of
// its vertices and the flags that occur. A problem, with its byte offset, if it can't be read.
eDescription DescribeAnimation(std::span<const std::uint8_t> bytes, std::string& problem);

}  // namespace inspect
