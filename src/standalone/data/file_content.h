#pragma once

#include <string>

#include "platform/io_status.h"

namespace standalone {

// The bytes of a file whose path is as the operating system spells it, UTF-8.
platform::eIoStatus ReadFileContent(const std::string& path, std::string& content);

}  // namespace standalone
