#include "platform/folder.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

#include "platform/code_page.h"
#include "platform/file_events.h"
#include "platform/native_path.h"
#include "platform/posix/errno_status.h"

namespace platform {
namespace {

bool ReadStatus(std::string_view path, ePathForm form, struct stat& status) {
    std::string native;
    return MakeNative(path, form, native).IsOk() && ::stat(native.c_str(), &status) == 0;
}

bool IsNativeFolder(const std::string& native) {
    struct stat status;
    return ::lstat(native.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The names in a folder, but "." and "..", in byte order.
eIoStatus ListNames(const std::string& native, std::vector<std::string>& names) {
    const std::unique_ptr<DIR, int (*)(DIR*)> list(::opendir(native.c_str()), ::closedir);
    if (!list) {
        return StatusFromErrno(errno);
    }
    errno = 0;
    while (const dirent* entry = ::readdir(list.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            names.emplace_back(name);
        }
        errno = 0;
    }
    const eIoStatus status = StatusFromErrno(errno);
    std::sort(names.begin(), names.end());
    return status;
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

eIoStatus RemoveFileNatively(const std::string& native) {
    const eIoStatus status = StatusOf(::unlink(native.c_str()));
    if (status.IsOk()) {
        TellFileEvent(eFileAction::Deleted, native, ePathForm::Native);
    }
    return status;
}

eIoStatus RemoveNatively(const std::string& native) {
    if (!IsNativeFolder(native)) {
        return RemoveFileNatively(native);
    }
    std::vector<std::string> names;
    eIoStatus status = ListNames(native, names);
    for (std::size_t index = 0; status.IsOk() && index < names.size(); ++index) {
        status = RemoveNatively(NativeJoin(native, names[index]));
    }
    return status.IsOk() ? StatusOf(::rmdir(native.c_str())) : status;
}

}  // namespace

bool Exists(std::string_view path, ePathForm form) {
    struct stat status;
    return ReadStatus(path, form, status);
}

bool IsFolder(std::string_view path, ePathForm form) {
    struct stat status;
    return ReadStatus(path, form, status) && S_ISDIR(status.st_mode);
}

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

eIoStatus MakeNativeFolder(const std::string& native) {
    return StatusOf(::mkdir(native.c_str(), 0777));
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

eIoStatus RemoveTree(std::string_view path, ePathForm form) {
    std::string native;
    const eIoStatus status = MakeNativeForWriting(path, form, native);
    return status.IsOk() ? RemoveNatively(native) : status;
}

}  // namespace platform
