// The date line of the text files.
#pragma once

#include <string>

namespace platform {

// The local time now as "Thu Nov 19 04:29:18 2026" (the form of asctime without its line end: days below 10
// have a blank in front). When the environment sets SOURCE_DATE_EPOCH (whole seconds since 1970), that moment
// in UTC stands instead, so that a build farm gets the same bytes for the same input.
std::string ClassicTime();

}  // namespace platform
