#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace answers {

// By what the content of a file is known again.
struct eContentMark {
    std::uint64_t bytes = 0;
    std::string sha256;  // 64 lower-case hexadecimal digits

    bool operator==(const eContentMark&) const = default;
};

// Of a file of the disk, by its native path; nothing if it can't be read.
std::optional<eContentMark> MarkOf(const std::string& native);

}  // namespace answers
