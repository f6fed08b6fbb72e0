#pragma once

#include <optional>
#include <string>

namespace cli {

// A path of the game as the user types it, UTF-8, in code page 1251; nothing if the code page lacks a
// character.
std::optional<std::string> OptionPath(const std::string& typed);

// A folder of this machine, in any alphabet (platform/path_text.h); nothing if it is not well-formed UTF-8.
// Absolute, unless it has a drive letter, since the next call that starts from the stored options may come
// from elsewhere.
std::optional<std::string> FolderOption(const std::string& typed);

}  // namespace cli
