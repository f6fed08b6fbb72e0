#include "platform/posix/errno_status.h"

#include <cerrno>

namespace platform {
namespace {

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

}  // namespace platform
