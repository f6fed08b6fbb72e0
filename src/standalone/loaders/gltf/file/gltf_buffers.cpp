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

// Nothing, with a problem, where there are no bytes to be had.
std::optional<eBytes> ReadFileBuffer(const std::string& file, const std::string& place,
                                     eImportReport& report) {
    std::string content;
    const platform::eIoStatus status = ReadFileContent(file, content);
    if (!status.IsOk()) {
        report.Problem(place, eMessageId::GltfBufferUnreadable, file, status.Text());
        return std::nullopt;
    }
    return eBytes(content.begin(), content.end());
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

}  // namespace

std::vector<eBytes> ReadGltfBuffers(const eJsonTree& json, const eGltfContainer& container,
                                    const std::string& folder, eImportReport& report) {
    std::vector<eBytes> buffers;
    for (const eJsonIndex entry : GltfEntries(json, "buffers")) {
        const std::string place = json.PathOf(entry);
        const std::string_view uri = JsonText(json, entry, "uri");
        const auto told = static_cast<std::size_t>(JsonWhole(json, entry, "byteLength", 0));
        eBytes& buffer = buffers.emplace_back();
        if (json.FindMember(entry, "uri") != kNoJson) {
            std::optional<eBytes> bytes = IsDataUri(uri)
                                              ? DecodeBuffer(uri, place, report)
                                              : ReadFileBuffer(FileOfUri(folder, uri), place, report);
            if (bytes) {
                CheckLength(bytes->size(), told, place, report);
                bytes->resize(std::min(bytes->size(), told));
                buffer = std::move(*bytes);
            }
        } else if (buffers.size() == 1 && container.isBinary) {
            CheckLength(container.binary.size(), told, place, report);
        } else if (FindJson(json, entry, {"extensions", "EXT_meshopt_compression"}) == kNoJson) {
            report.Problem(place, eMessageId::GltfBufferWithoutUri);
        }
    }
    return buffers;
}

}  // namespace standalone
