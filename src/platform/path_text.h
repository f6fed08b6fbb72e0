// Paths of the machine as text of the system.
//
// Inside the system a path is text in code page 1251, and folders of the machine have names in any alphabet.
// A character that the page lacks stands in such a path as an escape: the byte 0x98, which has no character
// in the page, and the character's code in four digits to the base 32, 0 to 9 and a to v, the highest first.
// No byte of an escape is a separator, a dot, or changes with the letter case, so that paths are joined,
// taken apart and compared as ever, and the way to UTF-8 (Utf8FromAnsi) takes it out again. Escapes belong to
// folders of the machine; what is written into a file of the game has none.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// Nothing if the text is not well-formed UTF-8, or holds a character from U+100000 on.
std::optional<std::string> PathTextFromUtf8(std::string_view utf8);

// The character of the escape that the text begins with, nothing where it begins with none. Only what the
// page lacks counts as an escape.
inline constexpr std::size_t kEscapeLength = 5;
std::optional<char32_t> ReadEscape(std::string_view text);

// True if the text holds a character that code page 1251 lacks.
bool HasEscape(std::string_view text);

}  // namespace platform
