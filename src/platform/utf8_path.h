// UTF-8 texts as paths of the standard library, which on Windows takes narrow text for something else.
#pragma once

#include <filesystem>
#include <string>

namespace platform {

inline std::filesystem::path PathFromUtf8(const std::string& utf8) {
    return std::u8string(utf8.begin(), utf8.end());
}

// With slashes.
inline std::string Utf8FromPath(const std::filesystem::path& path) {
    const std::u8string utf8 = path.generic_u8string();
    return std::string(utf8.begin(), utf8.end());
}

}  // namespace platform
