#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/io_status.h"

namespace standalone {

// The bytes of a file whose path is as the operating system spells it, UTF-8.
platform::eIoStatus ReadFileContent(const std::string& path, std::string& content);
platform::eIoStatus ReadFileContent(const std::string& path, std::vector<std::uint8_t>& content);

}  // namespace standalone
