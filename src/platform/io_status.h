// How an operation of the file system ended.
#pragma once

#include <string>

namespace platform {

// The reasons that callers tell apart; everything else is Other.
enum class eIoReason {
    None,
    NotFound,      // the file or one of its folders does not exist
    AccessDenied,  // permissions, a read-only file system
    NoSpace,       // disk full, quota or file size limit reached
    Exists,        // the name is taken already
    NoDrive,       // the path names a drive that is not mapped on this platform
    Fenced,        // the write fence does not allow the path
    Other,
};

struct eIoStatus {
    eIoReason reason = eIoReason::None;
    int code = 0;  // the operating system's number, 0 when the reason is our own

    bool IsOk() const { return reason == eIoReason::None; }
    // The operating system's words for the code, or our own, in English (ASCII), for logs and terminals.
    std::string Text() const;
};

}  // namespace platform
