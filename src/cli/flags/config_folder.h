#pragma once

#include <string>

namespace cli {

// The folder of the options file, UTF-8: the given one, or else that of the user's configuration. Empty if
// neither is known.
std::string ConfigFolder(const std::string& given);

}  // namespace cli
