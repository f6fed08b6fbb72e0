#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace standalone {

// Names that several objects of a 3DS file have, as its bytes say them. The format means by a name one
// object, and the import library gives each node of the name all of them.
std::vector<std::string> SharedStudioNames(std::string_view bytes);

}  // namespace standalone
