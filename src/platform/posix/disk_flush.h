// Brings what files hold to the disk.
#pragma once

#include <string>
#include <vector>

#include "platform/io_status.h"

namespace platform {

// Returns when the content behind the descriptor is on the disk. Some file systems know no such request; they
// write when they want, and nothing has failed.
eIoStatus FlushOpenFile(int descriptor);

// The same for files that are closed, whoever wrote them, and for the names in folders, with a result for
// each. Many small ones cost little more than one: the file system is asked to bring all that it holds to the
// disk, instead of once for each file, which would make the disk empty its own memory each time (206 files of
// 70 bytes: 17 ms instead of 60). That is left where it would not do, or where other programs have written so
// much that theirs would be waited for.
std::vector<eIoStatus> FlushFiles(const std::vector<std::string>& natives);

}  // namespace platform
