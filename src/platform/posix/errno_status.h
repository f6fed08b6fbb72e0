#pragma once

#include <cerrno>

#include "platform/io_status.h"

namespace platform {

eIoStatus StatusFromErrno(int code);

// Of a call that answers 0 or sets errno; errno is read here, after the call.
inline eIoStatus StatusOf(int result) {
    return result == 0 ? eIoStatus{} : StatusFromErrno(errno);
}

}  // namespace platform
