// What the POSIX sources share: paths of the system made native, and errno made a status.
#pragma once

#include <cerrno>
#include <string>
#include <string_view>

#include "platform/io_status.h"
#include "platform/path_lookup.h"

namespace platform {

eIoStatus StatusFromErrno(int code);

// Of a call that answers 0 or sets errno; errno is read here, after the call.
inline eIoStatus StatusOf(int result) {
    return result == 0 ? eIoStatus{} : StatusFromErrno(errno);
}

// The native path of either form, absolute and without "." and "..".
eIoStatus MakeNative(std::string_view path, ePathForm form, std::string& native);

// MakeNative for a path that is about to be changed: Fenced if the write fence does not allow it.
eIoStatus MakeNativeForWriting(std::string_view path, ePathForm form, std::string& native);

std::string NativeJoin(const std::string& folder, std::string_view name);

// The folder that holds the name: the path before its last slash.
std::string NativeParent(const std::string& native);

}  // namespace platform
