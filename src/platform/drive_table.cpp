#include "platform/drive_table.h"

#include <map>

#include "platform/code_page.h"

namespace platform {
namespace {

std::map<char, std::string>& Drives() {
    static std::map<char, std::string> drives;
    return drives;
}

}  // namespace

void MapDrive(char letter, const std::string& folder) {
    Drives()[LowerAnsiByte(letter)] = folder;
}

void ClearDrives() {
    Drives().clear();
}

std::optional<std::string> DriveFolder(char letter) {
    const auto found = Drives().find(LowerAnsiByte(letter));
    return found != Drives().end() ? std::optional(found->second) : std::nullopt;
}

}  // namespace platform
