#include "written/written_file.h"

#include "platform/file.h"

namespace written {

std::optional<platform::eFileContent> ReadWritten(const eName& path) {
    platform::eFile file;
    std::int64_t length = 0;
    if (!file.Open(path.Text(), platform::eFileAccess::Read).IsOk() || !file.Length(length).IsOk()) {
        return std::nullopt;
    }
    platform::eFileContent content(static_cast<std::size_t>(length));
    std::size_t got = 0;
    if (!file.Read(content.data(), content.size(), got).IsOk() || got != content.size()) {
        return std::nullopt;
    }
    return content;
}

ePlacedName Resolve(const eName& folder, const std::string& reference) {
    const std::size_t slash = reference.rfind('/');
    if (slash == std::string::npos) {
        return {folder, reference};
    }
    const eName way = folder / eName(reference.substr(0, slash));
    return {ResolveDots(way.Text()), reference.substr(slash + 1)};
}

}  // namespace written
