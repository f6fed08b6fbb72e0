// Last-write times of files.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/path_lookup.h"

namespace platform {

// Nanoseconds since 1970-01-01 UTC; nothing if the file can't be reached.
std::optional<std::int64_t> LastWriteTime(std::string_view path, ePathForm form = ePathForm::Resource);

}  // namespace platform
