#pragma once

#include <string>

#include "standalone/load_result.h"

namespace standalone {

// Reads a scene file of any known format; its content decides which, not its name. The path is as the
// operating system spells it, UTF-8.
eLoadResult LoadScene(const std::string& path);

}  // namespace standalone
