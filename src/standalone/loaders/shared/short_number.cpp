#include "standalone/loaders/shared/short_number.h"

#include <array>
#include <charconv>

namespace standalone {

std::string ShortNumber(double number) {
    std::array<char, 400> digits;  // the smallest number takes 327 characters, the largest 309
    const auto written =
        std::to_chars(digits.data(), digits.data() + digits.size(), number + 0.0, std::chars_format::fixed);
    return {digits.data(), written.ptr};
}

}  // namespace standalone
