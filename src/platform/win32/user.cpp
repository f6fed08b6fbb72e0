#include "platform/user.h"

#include <windows.h>
// After the system's main header.
#include <lmcons.h>
#include <shlobj.h>
#include <winnetwk.h>

#include <algorithm>
#include <vector>

#include "platform/native_path.h"
#include "platform/path_text.h"
#include "platform/win32/wide.h"

namespace platform {
namespace {

// Made if it does not exist; empty if the system can't tell.
std::wstring UserFolder(int which) {
    wchar_t folder[MAX_PATH];
    return ::SHGetFolderPathW(nullptr, which | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT, folder) == S_OK
               ? folder
               : std::wstring();
}

}  // namespace

std::string AccountName() {
    constexpr std::size_t longest = 1024;
    wchar_t name[UNLEN + 1];
    DWORD length = UNLEN + 1;
    const bool isKnown = ::GetUserNameW(name, &length) && length > 1;
    const std::optional<std::string> ansi =
        isKnown ? AnsiFromWide({name, length - 1}) : std::optional<std::string>();
    return ansi ? ansi->substr(0, longest) : "unknown";
}

std::string MachineName() {
    wchar_t name[MAX_COMPUTERNAME_LENGTH + 1];
    DWORD length = MAX_COMPUTERNAME_LENGTH + 1;
    return ::GetComputerNameW(name, &length) && length > 0 ? Utf8FromWide({name, length}) : "unknown";
}

std::uint32_t ProcessNumber() {
    return ::GetCurrentProcessId();
}

std::string ProcessName() {
    return MachineName() + "-" + std::to_string(::GetCurrentProcessId());
}

bool EndsInEndedProcess(std::string_view) {
    return false;
}

std::optional<std::string> NetworkPath(std::string_view path) {
    std::string native;
    if (!MakeNative(path, ePathForm::Resource, native).IsOk()) {
        return std::nullopt;
    }
    std::wstring wide = WideFromUtf8(native);
    std::replace(wide.begin(), wide.end(), L'/', L'\\');
    constexpr DWORD kRoom = 0x10000;
    std::vector<std::uint8_t> buffer(kRoom);
    DWORD room = kRoom;
    if (::WNetGetUniversalNameW(wide.c_str(), UNIVERSAL_NAME_INFO_LEVEL, buffer.data(), &room) != NO_ERROR) {
        return std::nullopt;
    }
    return PathTextFromUtf8(
        Utf8FromWide(reinterpret_cast<const UNIVERSAL_NAME_INFOW*>(buffer.data())->lpUniversalName));
}

std::string DocumentsFolder() {
    return PathTextFromUtf8(Utf8FromWide(UserFolder(CSIDL_PERSONAL))).value_or(std::string());
}

std::string UserLanguage() {
    return PRIMARYLANGID(::GetUserDefaultUILanguage()) == LANG_RUSSIAN ? "ru" : "en";
}

std::string ConfigFolder() {
    const std::wstring folder = UserFolder(CSIDL_APPDATA);
    return folder.empty() ? std::string() : Utf8FromWide(folder);
}

}  // namespace platform
