#include "platform/folder.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "platform/file_events.h"
#include "platform/native_path.h"
#include "platform/win32/error_status.h"
#include "platform/win32/handle.h"
#include "platform/win32/wide.h"

namespace platform {
namespace {

struct eFoundName {
    std::wstring name;
    DWORD attributes = 0;
    std::int64_t size = 0;  // bytes

    bool IsFolder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
};

DWORD Attributes(std::string_view path, ePathForm form) {
    std::string native;
    return MakeNative(path, form, native).IsOk() ? ::GetFileAttributesW(WidePath(native).c_str())
                                                 : INVALID_FILE_ATTRIBUTES;
}

// Everything in the folder but "." and "..".
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

// Links are removed, not followed.
eIoStatus RemoveNatively(const std::string& native, DWORD attributes) {
    const std::wstring path = WidePath(native);
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        const eIoStatus status = StatusOf(::DeleteFileW(path.c_str()));
        if (status.IsOk()) {
            TellFileEvent(eFileAction::Deleted, native, ePathForm::Native);
        }
        return status;
    }
    std::vector<eFoundName> names;
    const bool isLink = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    eIoStatus status = isLink ? eIoStatus{} : ListNames(native, names);
    for (std::size_t index = 0; status.IsOk() && index < names.size(); ++index) {
        status = RemoveNatively(NativeJoin(native, Utf8FromWide(names[index].name)), names[index].attributes);
    }
    return status.IsOk() ? StatusOf(::RemoveDirectoryW(path.c_str())) : status;
}

}  // namespace

bool Exists(std::string_view path, ePathForm form) {
    return Attributes(path, form) != INVALID_FILE_ATTRIBUTES;
}

bool IsFolder(std::string_view path, ePathForm form) {
    const DWORD attributes = Attributes(path, form);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Volume and number together name a folder. The high bits of a number are rarely in use, so that the two do
// not meet.
std::optional<std::uint64_t> FolderIdentity(std::string_view path) {
    constexpr int kVolumeShift = 48;
    constexpr int kHighShift = 32;
    std::string native;
    if (!MakeNative(path, ePathForm::Resource, native).IsOk()) {
        return std::nullopt;
    }
    const eHandle folder(::CreateFileW(WidePath(native).c_str(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                       FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION info;
    if (!folder.IsOpen() || !::GetFileInformationByHandle(folder.Get(), &info)) {
        return std::nullopt;
    }
    return std::uint64_t{info.dwVolumeSerialNumber} << kVolumeShift ^
           std::uint64_t{info.nFileIndexHigh} << kHighShift ^ info.nFileIndexLow;
}

eIoStatus MakeNativeFolder(const std::string& native) {
    if (Exists(native, ePathForm::Native)) {
        // The system denies to make the top of a drive instead of telling that it is there.
        return StatusFromError(ERROR_ALREADY_EXISTS);
    }
    return StatusOf(::CreateDirectoryW(WidePath(native).c_str(), nullptr));
}

eIoStatus ListFolder(std::string_view path, std::vector<eFolderEntry>& entries, ePathForm form,
                     std::vector<std::string>* nameless) {
    std::string native;
    std::vector<eFoundName> names;
    eIoStatus status = MakeNative(path, form, native);
    if (status.IsOk()) {
        status = ListNames(native, names);
    }
    entries.clear();
    for (const eFoundName& found : names) {
        if (std::optional<std::string> ansi = AnsiFromWide(found.name)) {
            entries.push_back({std::move(*ansi), found.IsFolder(), found.IsFolder() ? 0 : found.size});
        } else if (nameless != nullptr) {
            nameless->push_back(Utf8FromWide(found.name));
        }
    }
    std::ranges::sort(entries, {}, &eFolderEntry::name);
    return status;
}

eIoStatus RemoveTree(std::string_view path, ePathForm form) {
    std::string native;
    const eIoStatus status = MakeNativeForWriting(path, form, native);
    if (!status.IsOk()) {
        return status;
    }
    const DWORD attributes = Attributes(native, ePathForm::Native);
    return attributes == INVALID_FILE_ATTRIBUTES ? StatusOf(false) : RemoveNatively(native, attributes);
}

}  // namespace platform
