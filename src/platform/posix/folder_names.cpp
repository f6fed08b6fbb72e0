#include "platform/posix/folder_names.h"

#include <dirent.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string_view>

#include "platform/posix/errno_status.h"

namespace platform {

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

}  // namespace platform
