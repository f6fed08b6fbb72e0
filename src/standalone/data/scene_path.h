// Paths as scene files spell them, with slashes of either kind.
#pragma once

#include <string>
#include <string_view>

namespace standalone {

// The path of a file without its name and the slash before it; empty without a slash.
inline std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

// True for a path that begins at a root or with a drive letter.
inline bool IsAbsolutePath(std::string_view path) {
    return path.starts_with('/') || path.starts_with('\\') || (path.size() > 1 && path[1] == ':');
}

// A path of the machine, UTF-8, as the records of a scene have it (platform/path_text.h); broken bytes are
// "_".
std::string PathTextOf(const std::string& utf8);

}  // namespace standalone
