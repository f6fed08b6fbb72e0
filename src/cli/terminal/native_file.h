#pragma once

#include <string>
#include <string_view>

#include "base/bilingual.h"

namespace cli {

// Writes a whole file under the name that the user typed, through a temporary name beside it. Empty, or why
// it could not be written.
eBilingual WriteNativeFile(const std::string& path, std::string_view content);

}  // namespace cli
