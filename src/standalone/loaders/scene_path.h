#pragma once

#include <string>

namespace standalone {

// The path of a file without its name and the slash (either kind) before it; empty without a slash.
inline std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

}  // namespace standalone
