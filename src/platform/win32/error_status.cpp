#include "platform/win32/error_status.h"

#include <windows.h>

namespace platform {
namespace {

eIoReason ReasonOf(DWORD code) {
    switch (code) {
        case ERROR_SUCCESS:
            return eIoReason::None;
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_DIRECTORY:
            return eIoReason::NotFound;
        case ERROR_ACCESS_DENIED:
        case ERROR_WRITE_PROTECT:
        case ERROR_SHARING_VIOLATION:
            return eIoReason::AccessDenied;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return eIoReason::NoSpace;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return eIoReason::Exists;
        default:
            return eIoReason::Other;
    }
}

}  // namespace

eIoStatus StatusFromError(std::uint32_t code) {
    return {ReasonOf(code), static_cast<int>(code)};
}

eIoStatus StatusOf(bool succeeded) {
    return succeeded ? eIoStatus{} : StatusFromError(::GetLastError());
}

}  // namespace platform
