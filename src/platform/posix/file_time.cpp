#include "platform/file_time.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <string>

#include "platform/native_path.h"
#include "platform/posix/errno_status.h"

namespace platform {

std::optional<std::int64_t> LastWriteTime(std::string_view path, ePathForm form) {
    std::string native;
    struct stat status;
    if (!MakeNative(path, form, native).IsOk() || ::stat(native.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
}

eIoStatus SetLastWriteTimeToNow(std::string_view path) {
    std::string native;
    const eIoStatus status = MakeNativeForWriting(path, ePathForm::Resource, native);
    return status.IsOk() ? StatusOf(::utimensat(AT_FDCWD, native.c_str(), nullptr, 0)) : status;
}

}  // namespace platform
