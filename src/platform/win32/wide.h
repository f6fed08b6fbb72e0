// Text for the wide calls of Windows, whose results hang on no code page of the system.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

std::wstring WideFromAnsi(std::string_view ansi);  // code page 1251, or a path (platform/path_text.h)
// Nothing if the page lacks a character.
std::optional<std::string> AnsiFromWide(std::wstring_view wide);

std::wstring WideFromUtf8(std::string_view utf8);
std::string Utf8FromWide(std::wstring_view wide);

// A native path as the file calls take it: with the mark that stands for "as it is", so that no name is cut,
// trimmed or taken for a device.
std::wstring WidePath(const std::string& native);

}  // namespace platform
