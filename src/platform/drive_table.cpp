#include "platform/drive_table.h"

#include "platform/code_page.h"
#include "platform/process_state.h"

namespace platform {

bool HasDrive(std::string_view path) {
    const char letter = path.size() >= 2 && path[1] == ':' ? LowerAnsiByte(path[0]) : '\0';
    return letter >= 'a' && letter <= 'z';
}

void MapDrive(char letter, const std::string& folder) {
    ProcessState().drives[LowerAnsiByte(letter)] = folder;
}

void ClearDrives() {
    ProcessState().drives.clear();
}

std::optional<std::string> DriveFolder(char letter) {
    const auto& drives = ProcessState().drives;
    const auto found = drives.find(LowerAnsiByte(letter));
    return found != drives.end() ? std::optional(found->second) : std::nullopt;
}

}  // namespace platform
