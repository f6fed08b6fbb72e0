#pragma once

#include <windows.h>

namespace platform {

// A handle that is closed at the end of its life.
class eHandle {
public:
    explicit eHandle(HANDLE systemHandle) : handle(systemHandle) {}
    ~eHandle() {
        if (IsOpen()) {
            ::CloseHandle(handle);
        }
    }
    eHandle(const eHandle&) = delete;
    eHandle& operator=(const eHandle&) = delete;

    bool IsOpen() const { return handle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle; }

private:
    HANDLE handle;
};

// Other processes may do with the files what they like meanwhile.
inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

}  // namespace platform
