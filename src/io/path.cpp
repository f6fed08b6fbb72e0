#include "io/path.h"

#include "base/diagnostics.h"
#include "base/format.h"
#include "platform/drive_table.h"
#include "platform/folder.h"

namespace {

// True if the folder stands afterwards, made now or before. The reason why not is told here, since all that
// the callers see later is a file that can't be opened.
bool MakeOneFolder(const std::string& path) {
    const platform::eIoStatus made = platform::MakeFolder(path);
    const bool stands = made.IsOk() || made.reason == platform::eIoReason::Exists;
    if (!stands) {
        Warn(__FILE__, __LINE__, (format("%1%: %2%") % path % made.Text()).Text());
    }
    return stands;
}

// Where the folders begin: behind the drive and its slash. Any other colon is a letter of a name.
std::size_t WalkStart(const std::string& path) {
    constexpr std::size_t kDriveAndSlash = 3;
    return platform::HasDrive(path) ? kDriveAndSlash : 0;
}

}  // namespace

bool CreateFolders(const std::string& path) {
    if (path.empty() || PathExists(path)) {
        return true;
    }
    for (std::size_t slash = path.find('/', WalkStart(path)); slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
        if (slash > 0 && !MakeOneFolder(path.substr(0, slash))) {
            return false;
        }
    }
    return path.ends_with('/') || MakeOneFolder(path);
}

bool RemovePath(const std::string& path) {
    return platform::RemoveTree(path).IsOk();
}

bool PathExists(const std::string& path) {
    return platform::Exists(path);
}
