#include "platform/file_time.h"

#include <string>

#include "platform/file_layer.h"
#include "platform/native_path.h"

namespace platform {

std::optional<std::int64_t> LastWriteTime(std::string_view path, ePathForm form) {
    std::string native;
    return MakeNative(path, form, native).IsOk() ? Files().LastWriteTime(native) : std::nullopt;
}

eIoStatus TouchFile(std::string_view path, ePathForm form) {
    std::string native;
    const eIoStatus status = MakeNativeForWriting(path, form, native);
    return status.IsOk() ? Files().Touch(native) : status;
}

}  // namespace platform
