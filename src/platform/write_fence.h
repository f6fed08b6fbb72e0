// A scene is data from outside: a property or an animation name with ".." or an absolute path must not write
// beyond the folders that the user has named. Every operation of this module that creates, writes, renames or
// removes asks the fence. It is the last line of defence; callers that want to tell the user which node asks
// for which path call IsWriteAllowed first.
#pragma once

#include <string_view>

#include "platform/path_lookup.h"

namespace platform {

// Adds a folder (with all below it) or a single file to what may be written. With no root at all, as at the
// start, everything is allowed.
void AddWriteRoot(std::string_view path, ePathForm form = ePathForm::Resource);
void ClearWriteRoots();
// True if there is a root.
bool IsWriteFenced();

// True if the path lies in one of the roots once ".", "..", drives and case are resolved. Links below a root
// are followed: whoever set them up in the resource tree wanted so, and a scene can't make one. The null
// device is always allowed.
bool IsWriteAllowed(std::string_view path, ePathForm form = ePathForm::Resource);

}  // namespace platform
