// What the artist is told when a file could not be written or read.
#pragma once

#include <string>

#include "platform/io_status.h"

namespace xIo {

// Error boxes with the file and the reason, and `owner` as a further line if it is not empty. The run goes
// on.
void TellWriteFailure(const std::string& path, const platform::eIoStatus& status,
                      const std::string& owner = {});
void TellReadFailure(const std::string& path, const platform::eIoStatus& status,
                     const std::string& owner = {});

}  // namespace xIo
