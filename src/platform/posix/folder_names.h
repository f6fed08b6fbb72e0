#pragma once

#include <string>
#include <vector>

#include "platform/io_status.h"

namespace platform {

// The names in a folder, but "." and "..", in byte order.
eIoStatus ListNames(const std::string& native, std::vector<std::string>& names);

}  // namespace platform
