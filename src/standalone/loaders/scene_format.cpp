#include "standalone/loaders/scene_format.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "standalone/loaders/fbx/fbx_records.h"

namespace standalone {
namespace {

constexpr std::string_view kBinaryGltf = "glTF";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::size_t kHeadBytes = 4096;

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

// The outermost chunk with the first of those that it may hold.
bool IsStudio(std::string_view bytes) {
    constexpr std::string_view kMainChunk = "\x4D\x4D";
    constexpr std::string_view kVersionChunk{"\x02\x00\x0A\x00", 4};
    constexpr std::string_view kEditChunk = "\x3D\x3D";
    constexpr std::size_t kFirstInside = 6;
    return bytes.starts_with(kMainChunk) && bytes.size() > kFirstInside &&
           (bytes.substr(kFirstInside).starts_with(kVersionChunk) ||
            bytes.substr(kFirstInside).starts_with(kEditChunk));
}

bool IsCollada(std::string_view bytes) {
    const std::string_view head = bytes.substr(0, kHeadBytes);
    return head.starts_with('<') && head.find("<COLLADA") != std::string_view::npos;
}

// The first line that is no comment begins with one of the format's words.
bool IsWavefront(std::string_view bytes) {
    constexpr std::array<std::string_view, 9> kWords = {"v", "vt", "vn",     "f",     "o",
                                                        "g", "s",  "mtllib", "usemtl"};
    for (std::string_view rest = bytes.substr(0, kHeadBytes); !rest.empty();) {
        rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
        const std::string_view line = rest.substr(0, rest.find_first_of("\r\n"));
        rest.remove_prefix(line.size());
        if (!line.empty() && !line.starts_with('#')) {
            const std::string_view word = line.substr(0, line.find_first_of(" \t"));
            return word.size() < line.size() && std::ranges::find(kWords, word) != kWords.end();
        }
    }
    return false;
}

// Formats that only the import library reads.
eSceneFormat ForeignFormatOf(std::string_view bytes) {
    return IsBinaryFbx(bytes) || IsTextFbx(bytes) ? eSceneFormat::Fbx
           : IsStudio(bytes)                      ? eSceneFormat::Studio
           : IsCollada(bytes)                     ? eSceneFormat::Collada
           : IsWavefront(bytes)                   ? eSceneFormat::Wavefront
                                                  : eSceneFormat::Unknown;
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
        return ForeignFormatOf(bytes);
    }
    // Every glTF file must tell its version under "asset".
    return HasTopLevelKey(bytes, "asset") ? eSceneFormat::Gltf : eSceneFormat::Document;
}

}  // namespace standalone
