// Files that hold already what is about to be written.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "platform/file.h"

namespace platform {

// True if the file (native) has this content, and the layer in use leaves such files as they are. Costs one
// call of the system where no such file is there and three where its length is another one.
bool HoldsAlready(const std::string& native, std::span<const std::uint8_t> content);

// The same for the whole content of an open file; where that stands afterwards is left open.
bool HoldsAlready(const std::string& native, eFile& content);

}  // namespace platform
