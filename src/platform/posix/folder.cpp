#include "platform/folder.h"

#include <sys/stat.h>

#include <utility>

#include "platform/code_page.h"
#include "platform/native_path.h"
#include "platform/posix/folder_names.h"
#include "platform/posix/known_folders.h"

namespace platform {
namespace {

bool ReadStatus(std::string_view path, ePathForm form, struct stat& status) {
    std::string native;
    return MakeNative(path, form, native).IsOk() && ::stat(native.c_str(), &status) == 0;
}

// A link is what it leads to; one that leads nowhere is an empty file.
eFolderEntry DescribeEntry(std::string name, const std::string& native) {
    struct stat status;
    if (::stat(native.c_str(), &status) != 0) {
        return {std::move(name)};
    }
    const bool isFolder = S_ISDIR(status.st_mode);
    return {std::move(name), isFolder, isFolder ? 0 : static_cast<std::int64_t>(status.st_size)};
}

}  // namespace

// Device and number together name a folder. Devices have small numbers, so that the two do not meet.
std::optional<std::uint64_t> FolderIdentity(std::string_view path) {
    constexpr int kDeviceShift = 48;
    struct stat status;
    if (!ReadStatus(path, ePathForm::Resource, status)) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(status.st_dev) << kDeviceShift ^
           static_cast<std::uint64_t>(status.st_ino);
}

eIoStatus ListFolder(std::string_view path, std::vector<eFolderEntry>& entries, ePathForm form,
                     std::vector<std::string>* nameless) {
    std::string native;
    std::vector<std::string> names;
    eIoStatus status = MakeNative(path, form, native);
    if (status.IsOk()) {
        status = ListNames(native, names);
    }
    entries.clear();
    for (const std::string& name : names) {
        if (std::optional<std::string> ansi = AnsiFromUtf8(name)) {
            entries.push_back(DescribeEntry(std::move(*ansi), NativeJoin(native, name)));
        } else if (nameless != nullptr) {
            nameless->push_back(name);
        }
    }
    return status;
}

std::vector<std::string> NamesIn(const std::string& native) {
    std::vector<std::string> names;
    if (const auto* const known = KnownNames(native)) {
        names.assign(known->begin(), known->end());
    } else {
        ListNames(native, names);
    }
    return names;
}

}  // namespace platform
