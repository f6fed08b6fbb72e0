#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/io_status.h"

namespace standalone {

// Bytes as a container of the standard library has them, for a large file: what resize makes is not cleared,
// as it is read over at once.
class eLargeContent {
public:
    char* data() { return bytes.get(); }
    std::size_t size() const { return count; }
    // The first time, makes room for so many; afterwards only cuts.
    void resize(std::size_t newCount) {
        if (bytes == nullptr) {
            bytes = std::make_unique_for_overwrite<char[]>(newCount);
        }
        count = newCount;
    }
    std::string_view View() const { return {bytes.get(), count}; }

private:
    std::unique_ptr<char[]> bytes;
    std::size_t count = 0;
};

// The bytes of a file whose path is as the operating system spells it, UTF-8.
platform::eIoStatus ReadFileContent(const std::string& path, std::string& content);
platform::eIoStatus ReadFileContent(const std::string& path, std::vector<std::uint8_t>& content);
platform::eIoStatus ReadFileContent(const std::string& path, eLargeContent& content);

}  // namespace standalone
