// Drive letters, also on a platform that has none.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

// True for "X:" and what begins with it.
bool HasDrive(std::string_view path);

// Paths that begin with the letter and a colon lie under the folder from now on. The folder is a native path.
void MapDrive(char letter, const std::string& folder);
void ClearDrives();

// The folder of a drive; nothing if the letter is not mapped. Case of the letter does not matter.
std::optional<std::string> DriveFolder(char letter);

}  // namespace platform
