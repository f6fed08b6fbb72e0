#include "standalone/loaders/scene_format.h"

#include <cstddef>

namespace standalone {
namespace {

constexpr std::string_view kBinaryGltf = "glTF";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r\n";

// The offset of the quote that ends the text beginning at the offset.
std::size_t EndOfText(std::string_view json, std::size_t offset) {
    while (offset < json.size() && json[offset] != '"') {
        offset += json[offset] == '\\' ? 2 : 1;
    }
    return offset;
}

bool HasTopLevelKey(std::string_view json, std::string_view key) {
    int depth = 0;
    for (std::size_t offset = 0; offset < json.size(); ++offset) {
        const char byte = json[offset];
        if (byte == '{' || byte == '[') {
            ++depth;
        } else if (byte == '}' || byte == ']') {
            --depth;
        } else if (byte == '"') {
            const std::size_t start = offset + 1;
            offset = EndOfText(json, start);
            if (depth != 1 || offset >= json.size() || json.substr(start, offset - start) != key) {
                continue;
            }
            const std::size_t behind = json.find_first_not_of(kBlanks, offset + 1);
            if (behind != std::string_view::npos && json[behind] == ':') {
                return true;
            }
        }
    }
    return false;
}

}  // namespace

eSceneFormat SceneFormatOf(std::string_view bytes) {
    if (bytes.starts_with(kBinaryGltf)) {
        return eSceneFormat::Gltf;
    }
    if (bytes.starts_with(kByteOrderMark)) {
        bytes.remove_prefix(kByteOrderMark.size());
    }
    const std::size_t start = bytes.find_first_not_of(kBlanks);
    if (start == std::string_view::npos || bytes[start] != '{') {
        return eSceneFormat::Unknown;
    }
    // Every glTF file must tell its version under "asset".
    return HasTopLevelKey(bytes, "asset") ? eSceneFormat::Gltf : eSceneFormat::Document;
}

}  // namespace standalone
