#include "platform/temporary_folder.h"

#include <windows.h>

#include "platform/native_path.h"
#include "platform/win32/error_status.h"
#include "platform/win32/handle.h"
#include "platform/win32/wide.h"

namespace platform {
namespace {

std::string TemporaryRoot() {
    wchar_t root[MAX_PATH + 1];
    return AbsoluteNative(Utf8FromWide({root, ::GetTempPathW(MAX_PATH + 1, root)}));
}

}  // namespace

// Where the system keeps such folders nobody but the user may look, so the folder needs no rights of its own.
eIoStatus eTemporaryFolder::Make(std::shared_ptr<eTemporaryFolder>& folder) {
    constexpr int kAttempts = 10000;
    const std::string start =
        NativeJoin(TemporaryRoot(), "zyrexport_" + std::to_string(::GetCurrentProcessId()) + "_");
    folder = nullptr;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const std::string path = start + std::to_string(attempt);
        if (::CreateDirectoryW(WidePath(path).c_str(), nullptr)) {
            folder.reset(new eTemporaryFolder(path));
            return {};
        }
        if (::GetLastError() != ERROR_ALREADY_EXISTS) {
            break;
        }
    }
    return StatusOf(false);
}

eTemporaryFolder::~eTemporaryFolder() {
    for (const std::string& file : files) {
        ::DeleteFileW(WidePath(file).c_str());
    }
    ::RemoveDirectoryW(WidePath(path).c_str());
}

eIoStatus eTemporaryFolder::Write(const std::string& name, std::span<const std::uint8_t> content) {
    const std::string file = NativeJoin(path, name);
    const eHandle handle(::CreateFileW(WidePath(file).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                       FILE_ATTRIBUTE_TEMPORARY, nullptr));
    if (!handle.IsOpen()) {
        return StatusOf(false);
    }
    files.push_back(file);
    DWORD written = 0;
    return StatusOf(
        ::WriteFile(handle.Get(), content.data(), static_cast<DWORD>(content.size()), &written, nullptr) &&
        written == content.size());
}

}  // namespace platform
