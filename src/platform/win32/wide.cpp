#include "platform/win32/wide.h"

#include <windows.h>

#include <algorithm>

#include "platform/code_page.h"
#include "platform/path_lookup.h"

namespace platform {

std::wstring WideFromAnsi(std::string_view ansi) {
    return WideFromUtf8(Utf8FromAnsi(ansi));
}

std::optional<std::string> AnsiFromWide(std::wstring_view wide) {
    std::string ansi;
    ansi.reserve(wide.size());
    for (const wchar_t character : wide) {
        const int byte = AnsiByte(character);
        if (byte < 0) {
            return std::nullopt;
        }
        ansi += static_cast<char>(byte);
    }
    return ansi;
}

std::wstring WideFromUtf8(std::string_view utf8) {
    const int length = static_cast<int>(utf8.size());
    const int wideLength = ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(wideLength), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, wide.data(), wideLength);
    return wide;
}

std::string Utf8FromWide(std::wstring_view wide) {
    const int length = static_cast<int>(wide.size());
    const int byteCount =
        ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(byteCount), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(), byteCount, nullptr, nullptr);
    return utf8;
}

std::wstring WidePath(const std::string& native) {
    std::wstring wide = WideFromUtf8(native);
    if (IsNullDevice(native)) {
        return wide;
    }
    std::replace(wide.begin(), wide.end(), L'/', L'\\');
    const bool isNetwork = wide.starts_with(L"\\\\");
    return isNetwork ? L"\\\\?\\UNC\\" + wide.substr(2) : L"\\\\?\\" + wide;
}

}  // namespace platform
