#include "platform/native_path.h"

#include "platform/native_fence.h"

namespace platform {

eIoStatus MakeNative(std::string_view path, ePathForm form, std::string& native) {
    if (form == ePathForm::Resource) {
        return FindOnDisk(path, native);
    }
    native = AbsoluteNative(path);
    return {};
}

eIoStatus MakeNativeForWriting(std::string_view path, ePathForm form, std::string& native) {
    const eIoStatus found = MakeNative(path, form, native);
    if (found.IsOk() && !IsNativeWriteAllowed(native)) {
        return {eIoReason::Fenced, 0};
    }
    return found;
}

std::string NativeJoin(const std::string& folder, std::string_view name) {
    std::string path = folder;
    return path.append("/").append(name);
}

std::string NativeParent(const std::string& native) {
    const std::size_t slash = native.rfind('/');
    return slash == std::string::npos ? "" : native.substr(0, slash);
}

}  // namespace platform
