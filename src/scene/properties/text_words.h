#pragma once

#include <string_view>
#include <vector>

// Cutting property values. What the functions give points into their argument.

// The text without the blanks at both ends.
std::string_view TrimBlanks(std::string_view text);

// The pieces between separators, in order; an empty piece is none.
std::vector<std::string_view> WordsOf(std::string_view text, std::string_view separators);

// Cuts the next token off the front of `rest`: separators in front of it are skipped, the one behind it goes
// with it. Empty when there is none.
std::string_view CutToken(std::string_view& rest, std::string_view separators);
