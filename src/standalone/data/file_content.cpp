#include "standalone/data/file_content.h"

#include "platform/file.h"

namespace standalone {
namespace {

template <class Content>
platform::eIoStatus ReadInto(const std::string& path, Content& content) {
    platform::eFile file;
    std::int64_t length = 0;
    platform::eIoStatus status = file.Open(path, platform::eFileAccess::Read, platform::ePathForm::Native);
    if (status.IsOk()) {
        status = file.Length(length);
    }
    if (!status.IsOk()) {
        return status;
    }
    content.resize(static_cast<std::size_t>(length));
    std::size_t got = 0;
    status = file.Read(content.data(), content.size(), got);
    content.resize(got);
    return status;
}

}  // namespace

platform::eIoStatus ReadFileContent(const std::string& path, std::string& content) {
    return ReadInto(path, content);
}

platform::eIoStatus ReadFileContent(const std::string& path, std::vector<std::uint8_t>& content) {
    return ReadInto(path, content);
}

platform::eIoStatus ReadFileContent(const std::string& path, eLargeContent& content) {
    return ReadInto(path, content);
}

}  // namespace standalone
