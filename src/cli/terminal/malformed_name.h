#pragma once

#include <string_view>

#include "base/bilingual.h"

namespace cli {

// What is wrong with a path, or another word of the command line, that is not well-formed UTF-8, with the odd
// bytes made readable: names from old archives are often in the code page of another machine. Empty where the
// text is well-formed.
eBilingual MalformedNameProblem(std::string_view text);

}  // namespace cli
