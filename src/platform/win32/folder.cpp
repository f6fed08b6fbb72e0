#include "platform/folder.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "platform/native_path.h"
#include "platform/win32/folder_names.h"
#include "platform/win32/handle.h"
#include "platform/win32/wide.h"

namespace platform {
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

std::vector<std::string> NamesIn(const std::string& native) {
    std::vector<eFoundName> found;
    ListNames(native, found);
    std::vector<std::string> names;
    for (const eFoundName& entry : found) {
        names.push_back(Utf8FromWide(entry.name));
    }
    return names;
}

}  // namespace platform
