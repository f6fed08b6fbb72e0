#include "io/path.h"

#include <string_view>

#include "platform/folder.h"

namespace {

// True if the folder stands afterwards, made now or before.
bool MakeOneFolder(std::string_view path) {
    const platform::eIoStatus made = platform::MakeFolder(path);
    return made.IsOk() || made.reason == platform::eIoReason::Exists;
}

// Where the folders begin: behind the drive and its slash.
std::size_t WalkStart(const std::string& path) {
    const std::size_t colon = path.find(':');
    return colon == std::string::npos ? 0 : colon + 2;
}

}  // namespace

bool CreateFolders(const std::string& path) {
    if (path.empty() || PathExists(path)) {
        return true;
    }
    for (std::size_t slash = path.find('/', WalkStart(path)); slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
        if (slash > 0 && !MakeOneFolder(std::string_view(path).substr(0, slash))) {
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
