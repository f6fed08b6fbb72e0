// Cyrillic letters that look like Latin ones: a slip of the keyboard that nobody sees. Code page 1251.
#pragma once

#include <string>
#include <string_view>

namespace answers {

// The text with each Cyrillic letter that has a Latin look-alike replaced by it.
std::string InLatin(std::string_view text);

// True if a word of the text has letters of both alphabets, and its Cyrillic ones all look like Latin ones or
// its Latin ones all like Cyrillic ones. Words end at anything that is no letter.
bool MixesAlphabets(std::string_view text);

}  // namespace answers
