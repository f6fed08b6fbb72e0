// From the paths of the system to the paths of the disk.
//
// Inside the system a path is text in code page 1251 with slashes in any direction, and case does not matter.
// On POSIX the disk has UTF-8 names whose case matters. The look-up bridges the two: backslashes become
// slashes, a drive letter is replaced by its folder (drive_table.h), "." and ".." are resolved in the text
// (as they are on Windows, so that a link can't lead a ".." astray), and each part that does not exist as
// spelled is searched for in another case. Of several spellings the exact one wins, then the first in byte
// order. From the first part that exists in no spelling on, the path is lower case.
//
// On Windows the disk itself finds every spelling. A drive letter that has a folder of ours leads there, any
// other to the system's drive.
//
// All functions of this module that take a path (std::string_view) look it up this way. The exception are
// native paths, which are bytes as the operating system gives them (command line arguments): functions that
// accept both take an ePathForm.
#pragma once

#include <string>
#include <string_view>

#include "platform/io_status.h"

namespace platform {

enum class ePathForm {
    Resource,  // code page 1251, looked up without regard to case
    Native,    // as the operating system spells it (UTF-8), used as it stands
};

// Where a path lies on disk. Costs one system call when the path exists as spelled; lists a folder only where
// a part does not.
// NoDrive when the path begins with a drive letter that is not mapped, NotFound when it is empty; diskPath is
// empty then. A path that does not exist is ok: diskPath is where it would be created.
eIoStatus FindOnDisk(std::string_view path, std::string& diskPath);

// The same for messages and reports: the path on disk, or the path itself in UTF-8 where it can't be reached.
std::string DiskPath(std::string_view path, ePathForm form = ePathForm::Resource);

// The file that swallows everything written to it: "nul" in any case, or the platform's own name for it. It
// never takes part in look-up, fence or rename.
bool IsNullDevice(std::string_view path);

}  // namespace platform
