#pragma once

#include <string>

namespace standalone {

// A number without exponent and with as few digits as tell it: 1, 0.5.
std::string ShortNumber(double number);

}  // namespace standalone
