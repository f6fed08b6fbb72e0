#include <windows.h>

#include <algorithm>

#include "platform/native_path.h"
#include "platform/win32/wide.h"

namespace platform {

// The system's own rules decide what a path means (blanks and dots at the end of a part, the current folder
// of a drive), so that the fence compares what a call would really reach.
std::string AbsoluteNative(std::string_view path) {
    if (IsNullDevice(path)) {
        return std::string(path);
    }
    const std::wstring wide = WideFromUtf8(path);
    const DWORD room = ::GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr);
    std::wstring full(room, L'\0');
    full.resize(::GetFullPathNameW(wide.c_str(), room, full.data(), nullptr));
    std::string native = Utf8FromWide(full);
    std::replace(native.begin(), native.end(), '\\', '/');
    constexpr std::size_t kDriveRoot = 3;  // "C:/"
    while (native.size() > kDriveRoot && native.ends_with('/')) {
        native.pop_back();
    }
    return native;
}

std::string NativeCaseKey(const std::string& native) {
    std::wstring wide = WideFromUtf8(native);
    ::CharLowerBuffW(wide.data(), static_cast<DWORD>(wide.size()));
    return Utf8FromWide(wide);
}

}  // namespace platform
