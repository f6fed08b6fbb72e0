#include "platform/win32/folder_names.h"

#include <string_view>

#include "platform/win32/error_status.h"
#include "platform/win32/wide.h"

namespace platform {

eIoStatus ListNames(const std::string& native, std::vector<eFoundName>& names) {
    WIN32_FIND_DATAW data;
    HANDLE search = ::FindFirstFileW((WidePath(native) + L"\\*").c_str(), &data);
    if (search == INVALID_HANDLE_VALUE) {
        return StatusOf(false);
    }
    do {
        const std::wstring_view name = data.cFileName;
        if (name != L"." && name != L"..") {
            LARGE_INTEGER size;
            size.LowPart = data.nFileSizeLow;
            size.HighPart = static_cast<LONG>(data.nFileSizeHigh);
            names.push_back({std::wstring(name), data.dwFileAttributes, size.QuadPart});
        }
    } while (::FindNextFileW(search, &data));
    const DWORD end = ::GetLastError();
    ::FindClose(search);
    return end == ERROR_NO_MORE_FILES ? eIoStatus{} : StatusFromError(end);
}

}  // namespace platform
