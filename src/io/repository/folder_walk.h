#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace xIo {

struct eWalkedFile {
    std::string name;  // the prefix and the path below the folder, lower case with slashes
    std::string path;  // on disk
    std::int64_t size = 0;
};

// Calls `visit` for each file below the folder, folder by folder, in the order of eMountOrder. Folders whose
// lower-case name is excluded, and folders that a link leads back into, are not entered. What can't be read
// or named is left out and told in the result: a line each, empty if there is nothing to tell.
std::string WalkFolder(const std::string& prefix, const std::string& folder,
                       const std::vector<std::string>& excludedFolders,
                       const std::function<void(const eWalkedFile&)>& visit);

}  // namespace xIo
