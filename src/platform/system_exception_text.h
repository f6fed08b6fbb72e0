#pragma once

#include <cstdint>
#include <string>

namespace platform {

// The operating system's message text for an exception code; empty where it has none (always on POSIX, whose
// signals are all turned into named codes).
std::string SystemExceptionText(std::uint32_t code);

}  // namespace platform
