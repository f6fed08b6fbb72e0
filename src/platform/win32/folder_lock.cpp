#include "platform/folder_lock.h"

#include <windows.h>

#include "platform/win32/wide.h"

namespace platform {

// Nobody else can open it for writing, and the system removes it with its last handle.
eLockAnswer TakeLockFile(const std::string& path, const std::string& owner, std::intptr_t& file) {
    HANDLE opened =
        ::CreateFileW(WidePath(path).c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr,
                      CREATE_ALWAYS, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (opened == INVALID_HANDLE_VALUE) {
        return ::GetLastError() == ERROR_SHARING_VIOLATION ? eLockAnswer::InUse : eLockAnswer::None;
    }
    // Only for people: a lock without its owner's name locks as well.
    DWORD written = 0;
    ::WriteFile(opened, owner.data(), static_cast<DWORD>(owner.size()), &written, nullptr);
    file = reinterpret_cast<std::intptr_t>(opened);
    return eLockAnswer::Held;
}

void ReleaseLockFile(const std::string&, std::intptr_t file) {
    ::CloseHandle(reinterpret_cast<HANDLE>(file));
}

}  // namespace platform
