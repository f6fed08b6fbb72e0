#include "standalone/loaders/gltf/file/gltf_buffers.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "standalone/data/file_content.h"
#include "standalone/loaders/gltf/file/gltf_json.h"
#include "standalone/loaders/gltf/file/gltf_uri.h"

namespace standalone {
namespace {

using eBytes = std::vector<std::uint8_t>;

std::span<const std::uint8_t> BytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// Nothing, with a problem, where there are no bytes to be had.
std::optional<eBytes> ReadFileBuffer(const std::string& file, const std::string& place,
                                     eImportReport& report) {
    eBytes content;
    const platform::eIoStatus status = ReadFileContent(file, content);
    if (!status.IsOk()) {
        report.Problem(place, eMessageId::GltfBufferUnreadable, file, status.Text());
        return std::nullopt;
    }
    return content;
}

std::optional<eBytes> DecodeBuffer(std::string_view uri, const std::string& place, eImportReport& report) {
    const std::optional<eDataUri> data = SplitDataUri(uri);
    std::optional<eBytes> bytes = data ? DecodeBase64(data->base64) : std::nullopt;
    if (!bytes) {
        report.Problem(place, eMessageId::GltfBufferData);
    }
    return bytes;
}

void CheckLength(std::size_t length, std::size_t told, const std::string& place, eImportReport& report) {
    if (length < told) {
        report.Problem(place, eMessageId::GltfBufferLength, length, told);
    }
}

// What could be read of a buffer that is elsewhere than in the binary part.
eBytes ReadUriBuffer(std::string_view uri, const std::string& folder, std::size_t told,
                     const std::string& place, eImportReport& report) {
    std::optional<eBytes> bytes = IsDataUri(uri) ? DecodeBuffer(uri, place, report)
                                                 : ReadFileBuffer(FileOfUri(folder, uri), place, report);
    if (!bytes) {
        return {};
    }
    CheckLength(bytes->size(), told, place, report);
    bytes->resize(std::min(bytes->size(), told));
    return std::move(*bytes);
}

}  // namespace

std::size_t eGltfBuffers::Size() const {
    std::size_t size = 0;
    for (const std::span<const std::uint8_t> buffer : bytes) {
        size += buffer.size();
    }
    return size;
}

int eGltfBuffers::Add(std::vector<std::uint8_t> own) {
    bytes.push_back(kept.emplace_back(std::move(own)));
    return static_cast<int>(bytes.size()) - 1;
}

eGltfBuffers ReadGltfBuffers(const eJsonTree& json, const eGltfContainer& container,
                             const std::string& folder, eImportReport& report) {
    eGltfBuffers buffers;
    const std::vector<eJsonIndex> entries = GltfEntries(json, "buffers");
    for (const eJsonIndex entry : entries) {
        const std::string place = json.PathOf(entry);
        const std::string_view uri = JsonText(json, entry, "uri");
        const auto told = static_cast<std::size_t>(JsonWhole(json, entry, "byteLength", 0));
        if (json.FindMember(entry, "uri") != kNoJson) {
            buffers.Add(ReadUriBuffer(uri, folder, told, place, report));
        } else if (entry == entries.front() && container.isBinary) {
            CheckLength(container.binary.size(), told, place, report);
            buffers.Add(BytesOf(container.binary.substr(0, told)));
        } else {
            if (FindJson(json, entry, {"extensions", "EXT_meshopt_compression"}) == kNoJson) {
                report.Problem(place, eMessageId::GltfBufferWithoutUri);
            }
            buffers.Add(eBytes());
        }
    }
    return buffers;
}

}  // namespace standalone
