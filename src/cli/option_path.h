#pragma once

#include <optional>
#include <string>

namespace cli {

// A path as the user types it, UTF-8, in code page 1251; nothing if the code page lacks a character.
std::optional<std::string> OptionPath(const std::string& typed);

// The same for a folder of this machine: absolute, unless it has a drive letter, since the next call that
// starts from the stored options may come from elsewhere.
std::optional<std::string> FolderOption(const std::string& typed);

}  // namespace cli
