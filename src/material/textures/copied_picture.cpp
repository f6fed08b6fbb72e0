#include "material/textures/copied_picture.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "io/name.h"
#include "io/streams/stream_file.h"
#include "material/textures/picture_head.h"

namespace {

constexpr int kWholeFile = 0x7FFFFFFF;

std::string ExtensionOf(const std::string& path) {
    return eName(path).Part(eName::Extension).Text();
}

// At most `count` bytes from the start on; nothing of a file that can't be read.
std::vector<std::uint8_t> ReadStart(const std::string& path, int count) {
    xIo::eFileStream file;
    std::vector<std::uint8_t> content;
    if (file.Open(path, xIo::streamRead)) {
        content.resize(static_cast<std::size_t>(std::min(count, file.Size())));
        file.Read(content.data(), static_cast<int>(content.size()));
    }
    return content;
}

bool IsMisnamed(const std::string& extension, const std::optional<ePictureHead>& head) {
    const bool isOfOneKind = extension == ".bmp" || extension == ".dds" || extension == ".tga";
    return !head || (isOfOneKind && head->format != extension.substr(1));
}

}  // namespace

bool IsMisnamedPicture(const std::string& path) {
    const auto start = ReadStart(path, kPictureMarkSize);
    return !start.empty() && IsMisnamed(ExtensionOf(path), ReadPictureHead(start));
}

bool IsCutOffPicture(const std::string& path) {
    const auto file = ReadStart(path, kWholeFile);
    const auto head = ReadPictureHead(file);
    return file.empty() || (!IsMisnamed(ExtensionOf(path), head) && head->isCutOff);
}
