#pragma once

#include <string>
#include <string_view>

namespace standalone {

// Breaks a JSON text without blanks into lines for people to read: an object or list that fits into a line of
// 100 columns stands on one, others give each entry a line; short lists and numbers in a list share lines.
// Two columns of indent a level, a line end at the end. The text is well-formed; columns count bytes.
std::string LayOutJson(std::string_view compact);

}  // namespace standalone
