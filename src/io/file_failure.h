// What the artist is told when a file could not be written or read.
#pragma once

#include <string>

#include "platform/io_status.h"

namespace xIo {

// Error boxes with the file and the reason. The run goes on.
void TellWriteFailure(const std::string& path, const platform::eIoStatus& status);
void TellReadFailure(const std::string& path, const platform::eIoStatus& status);

}  // namespace xIo
