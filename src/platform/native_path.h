// Paths as the operating system takes them, for the sources of this module: UTF-8, absolute, without "." and
// "..", with slashes.
#pragma once

#include <string>
#include <string_view>

#include "platform/io_status.h"
#include "platform/path_lookup.h"

namespace platform {

// The native path of a path that the operating system has spelled, or the user as he would for it.
std::string AbsoluteNative(std::string_view path);

// The native path of either form.
eIoStatus MakeNative(std::string_view path, ePathForm form, std::string& native);

// MakeNative for a path that is about to be changed: Fenced if the write fence does not allow it.
eIoStatus MakeNativeForWriting(std::string_view path, ePathForm form, std::string& native);

std::string NativeJoin(const std::string& folder, std::string_view name);

// The folder that holds the name: the path before its last slash.
std::string NativeParent(const std::string& native);

// The path in the one spelling that all spellings have in common, where the disk does not look at case.
std::string NativeCaseKey(const std::string& native);

}  // namespace platform
