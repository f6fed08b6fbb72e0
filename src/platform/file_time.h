// Last-write times of files.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/io_status.h"
#include "platform/path_lookup.h"

namespace platform {

// Nanoseconds since 1970-01-01 UTC; nothing if the file can't be reached.
std::optional<std::int64_t> LastWriteTime(std::string_view path, ePathForm form = ePathForm::Resource);

// Makes the present time that of the last write, as if the file had been written again. Obeys the write
// fence, and refuses a link.
eIoStatus TouchFile(std::string_view path, ePathForm form = ePathForm::Resource);

}  // namespace platform
