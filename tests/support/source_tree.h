// Where the examples and other files of the source tree lie when tests run.
#pragma once

#include <filesystem>

namespace support {

inline std::filesystem::path SourceTree() {
    return ZYR_SOURCE_TREE;
}

}  // namespace support
