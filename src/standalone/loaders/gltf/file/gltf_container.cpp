#include "standalone/loaders/gltf/file/gltf_container.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

namespace standalone {
namespace {

// A binary file, little-endian:
//   offset  size
//        0     4  "glTF"
//        4     4  version, 2
//        8     4  length of the whole file
//       12        chunks: length of the content, type, content; lengths are multiples of 4
// The first chunk is "JSON". The buffer follows in a chunk "BIN\0"; chunks of other types are passed over.
constexpr std::string_view kMagic = "glTF";
constexpr std::string_view kJsonChunk = "JSON";
constexpr std::string_view kBinaryChunk{"BIN\0", 4};
constexpr std::size_t kHeaderSize = 12;
constexpr std::size_t kChunkHeaderSize = 8;
constexpr std::uint32_t kVersion = 2;

std::uint32_t ReadWord(std::string_view bytes, std::size_t offset) {
    std::uint32_t word = 0;
    for (std::size_t i = 4; i-- > 0;) {
        word = word << 8 | static_cast<unsigned char>(bytes[offset + i]);
    }
    return word;
}

struct eChunk {
    std::string_view type;
    std::string_view content;
    std::size_t end = 0;
};

// The chunk that starts at the offset, or nothing, with a problem.
std::optional<eChunk> ReadChunk(std::string_view bytes, std::size_t offset, eImportReport& report) {
    if (bytes.size() - offset < kChunkHeaderSize) {
        report.Problem("", eMessageId::GltfCutChunkHead, offset);
        return std::nullopt;
    }
    const std::uint32_t length = ReadWord(bytes, offset);
    const std::size_t start = offset + kChunkHeaderSize;
    if (length > bytes.size() - start) {
        report.Problem("", eMessageId::GltfCutChunk, offset, length, bytes.size() - start);
        return std::nullopt;
    }
    if (length % 4 != 0) {
        report.Problem("", eMessageId::GltfChunkLength, offset);
        return std::nullopt;
    }
    return eChunk{bytes.substr(offset + 4, 4), bytes.substr(start, length), start + length};
}

// False, with a problem, where the chunks can't be found.
bool CheckHeader(std::string_view bytes, eImportReport& report) {
    if (bytes.size() < kHeaderSize) {
        report.Problem("", eMessageId::GltfCutHead, bytes.size());
        return false;
    }
    if (const std::uint32_t version = ReadWord(bytes, 4); version != kVersion) {
        report.Problem("", eMessageId::GltfBinaryVersion, 4, version);
        return false;
    }
    if (const std::uint32_t length = ReadWord(bytes, 8); length > bytes.size() || length < kHeaderSize) {
        report.Problem("", eMessageId::GltfFileLength, 8, length, bytes.size());
        return false;
    }
    return true;
}

eGltfContainer OpenBinary(std::string_view bytes, eImportReport& report) {
    eGltfContainer container{true, {}, {}};
    if (!CheckHeader(bytes, report)) {
        return container;
    }
    bytes = bytes.substr(0, ReadWord(bytes, 8));
    const std::optional<eChunk> json = ReadChunk(bytes, kHeaderSize, report);
    if (!json) {
        return container;
    }
    if (json->type != kJsonChunk) {
        report.Problem("", eMessageId::GltfFirstChunk, kHeaderSize);
        return container;
    }
    container.json = json->content;
    if (json->end < bytes.size()) {
        const std::optional<eChunk> binary = ReadChunk(bytes, json->end, report);
        if (binary && binary->type == kBinaryChunk) {
            container.binary = binary->content;
        }
    }
    return container;
}

}  // namespace

eGltfContainer OpenGltfContainer(std::string_view bytes, eImportReport& report) {
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max()) {
        report.Problem("", eMessageId::GltfTooLarge);
        return {};
    }
    if (bytes.starts_with(kMagic)) {
        return OpenBinary(bytes, report);
    }
    return {false, bytes, {}};
}

}  // namespace standalone
