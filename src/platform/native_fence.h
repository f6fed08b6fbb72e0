// The write fence for native paths, for the sources of this module.
#pragma once

#include <string>

namespace platform {

// The path is absolute and without "." and "..".
bool IsNativeWriteAllowed(const std::string& native);

// True for what IsNativeWriteAllowed allows and for the folders above a root.
bool IsNativeFolderAllowed(const std::string& native);

}  // namespace platform
