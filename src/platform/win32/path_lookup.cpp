#include "platform/path_lookup.h"

#include <windows.h>

#include "platform/code_page.h"
#include "platform/drive_table.h"
#include "platform/native_path.h"
#include "platform/win32/error_status.h"

namespace platform {
namespace {

constexpr const char* nativeNullDevice = "nul";
constexpr std::size_t kDriveLength = 2;  // "C:"

bool DriveExists(char letter) {
    const char root[] = {letter, ':', '\\', '\0'};
    return ::GetDriveTypeA(root) != DRIVE_NO_ROOT_DIR;
}

// Where a path with a drive letter lies. It always begins at the top of the drive, and can't leave it.
eIoStatus FindOnDrive(const std::string& utf8, std::string& diskPath) {
    const std::string fromTop =
        AbsoluteNative(utf8.substr(0, kDriveLength) + "/" + utf8.substr(kDriveLength));
    if (const std::optional<std::string> folder = DriveFolder(utf8[0])) {
        diskPath = AbsoluteNative(*folder + fromTop.substr(kDriveLength));
        return {};
    }
    if (!DriveExists(utf8[0])) {
        return {eIoReason::NoDrive, 0};
    }
    diskPath = fromTop;
    return {};
}

}  // namespace

bool IsNullDevice(std::string_view path) {
    return path.size() == 3 && (path[0] == 'n' || path[0] == 'N') && (path[1] == 'u' || path[1] == 'U') &&
           (path[2] == 'l' || path[2] == 'L');
}

// The disk itself finds every spelling.
eIoStatus FindOnDisk(std::string_view path, std::string& diskPath) {
    diskPath.clear();
    if (IsNullDevice(path)) {
        diskPath = nativeNullDevice;
        return {};
    }
    if (path.empty()) {
        return StatusFromError(ERROR_PATH_NOT_FOUND);
    }
    const std::string utf8 = Utf8FromAnsi(path);
    if (HasDrive(path)) {
        return FindOnDrive(utf8, diskPath);
    }
    diskPath = AbsoluteNative(utf8);
    return {};
}

std::string DiskPath(std::string_view path, ePathForm form) {
    std::string native;
    return MakeNative(path, form, native).IsOk() ? native : Utf8FromAnsi(path);
}

}  // namespace platform
