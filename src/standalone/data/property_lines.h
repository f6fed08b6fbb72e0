#pragma once

#include <string>
#include <string_view>

namespace standalone {

// Adds a line at the end of a user-defined property text, behind CR LF where the text does not end in one.
void AppendPropertyLine(std::string& properties, std::string_view line);

}  // namespace standalone
