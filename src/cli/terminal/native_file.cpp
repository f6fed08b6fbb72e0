#include "cli/terminal/native_file.h"

#include "messages/io_reason.h"
#include "platform/file.h"

namespace cli {

namespace {

constexpr auto kNative = platform::ePathForm::Native;

platform::eIoStatus WriteContent(const std::string& path, std::string_view content) {
    platform::eFile file;
    platform::eIoStatus status = file.Open(path, platform::eFileAccess::WriteNew, kNative);
    if (status.IsOk()) {
        status = file.Write(content.data(), content.size());
    }
    if (status.IsOk()) {
        status = file.Sync();
    }
    const platform::eIoStatus closed = file.Close();
    return status.IsOk() ? closed : status;
}

}  // namespace

eBilingual WriteNativeFile(const std::string& path, std::string_view content) {
    const std::string temporary = path + ".tmp";
    platform::eIoStatus status = WriteContent(temporary, content);
    if (status.IsOk()) {
        status = platform::RenameOver(temporary, path, kNative);
    }
    return status.IsOk() ? eBilingual() : ReasonWords(status);
}

}  // namespace cli
