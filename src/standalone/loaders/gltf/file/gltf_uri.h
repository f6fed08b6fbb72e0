#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace standalone {

// The text with its %XX escapes taken out; an escape that is none stays as it stands.
std::string DecodeUri(std::string_view uri);

// The file that a URI names: beside the file of `folder` (without slash at the end) unless it is absolute.
std::string FileOfUri(const std::string& folder, std::string_view uri);

// The folder part of a path, without slash at the end; empty for a name alone.
std::string FolderOfFile(const std::string& path);

struct eDataUri {
    std::string_view mediaType;  // "image/png"
    std::string_view base64;
};

// The parts of a data URI; nothing for another URI, or one that is not in base 64.
std::optional<eDataUri> SplitDataUri(std::string_view uri);
inline bool IsDataUri(std::string_view uri) {
    return uri.starts_with("data:");
}

// The bytes of a text in base 64; nothing if it holds anything else. Padding may be left out.
std::optional<std::vector<std::uint8_t>> DecodeBase64(std::string_view text);

}  // namespace standalone
