#pragma once

namespace xIo {

// What stands behind the name of a file until it is complete.
inline constexpr const char* temporarySuffix = ".tmp";

}  // namespace xIo
