// What the artist is told when a file could not be written or read.
#pragma once

#include <string>

#include "messages/message_place.h"
#include "platform/io_status.h"

namespace xIo {

// Error boxes with the file and the reason, and as a further line the material and the map of `owner`, if the
// file was for one. The run goes on.
void TellWriteFailure(const std::string& path, const platform::eIoStatus& status,
                      const eMessagePlace& owner = {});
void TellReadFailure(const std::string& path, const platform::eIoStatus& status,
                     const eMessagePlace& owner = {});

}  // namespace xIo
