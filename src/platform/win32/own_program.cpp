#include "platform/own_program.h"

#include <windows.h>

#include "platform/native_path.h"
#include "platform/win32/wide.h"

namespace platform {

std::string OwnProgram() {
    constexpr std::size_t kLongestPath = 0x8000;
    std::wstring path(kLongestPath, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), kLongestPath));
    return path.empty() ? std::string() : AbsoluteNative(Utf8FromWide(path));
}

}  // namespace platform
