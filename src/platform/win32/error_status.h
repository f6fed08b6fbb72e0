#pragma once

#include <cstdint>

#include "platform/io_status.h"

namespace platform {

// From an error code of Windows; 0 is no error.
eIoStatus StatusFromError(std::uint32_t code);

// Of a call that has just ended: ok, or what the thread's last error says.
eIoStatus StatusOf(bool succeeded);

}  // namespace platform
