#include "platform/posix/native_path.h"

#include <unistd.h>
#include <climits>

#include <cerrno>

#include "platform/native_fence.h"

namespace platform {
namespace {

std::string CurrentFolder() {
    char folder[PATH_MAX];
    return ::getcwd(folder, sizeof folder) != nullptr ? folder : "";
}

// Native paths keep their links: only the start is made absolute and empty and "." parts go. ".." is resolved
// in the text, as the fence compares texts.
std::string AbsoluteNative(std::string_view path) {
    std::string result = path.starts_with('/') ? "" : CurrentFolder();
    while (!path.empty()) {
        const std::string_view part = path.substr(0, path.find('/'));
        path.remove_prefix(part.size() < path.size() ? part.size() + 1 : part.size());
        if (part == "..") {
            result = NativeParent(result);
        } else if (!part.empty() && part != ".") {
            result.append("/").append(part);
        }
    }
    return result.empty() ? "/" : result;
}

eIoReason ReasonOf(int code) {
    switch (code) {
        case 0:
            return eIoReason::None;
        case ENOENT:
        case ENOTDIR:
            return eIoReason::NotFound;
        case EACCES:
        case EPERM:
        case EROFS:
        case EISDIR:
            return eIoReason::AccessDenied;
        case ENOSPC:
        case EFBIG:
        case EDQUOT:
            return eIoReason::NoSpace;
        case EEXIST:
            return eIoReason::Exists;
        default:
            return eIoReason::Other;
    }
}

}  // namespace

eIoStatus StatusFromErrno(int code) {
    return {ReasonOf(code), code};
}

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
