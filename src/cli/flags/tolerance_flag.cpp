#include "cli/flags/tolerance_flag.h"

#include <cstdlib>

#include "base/number_text.h"
#include "cli/terminal/terminal_text.h"

namespace cli {

namespace {

constexpr double kMetresPerMillimetre = 0.001;

bool TakeBound(const std::string& word, const eBounds& bounds) {
    const std::size_t equals = word.find('=');
    const std::string kind = word.substr(0, equals);
    char* end = nullptr;
    const char* const number = equals == std::string::npos ? "" : word.c_str() + equals + 1;
    const double value = std::strtod(number, &end);
    const bool isNumber = *number != '\0' && *end == '\0' && value >= 0;
    if (isNumber && kind == "mm") {
        *bounds.metres = value * kMetresPerMillimetre;
    } else if (isNumber && kind == "degrees") {
        *bounds.degrees = value;
    } else if (isNumber && kind == "db") {
        *bounds.decibels = value;
    } else {
        TellError(ePhrase::UsageTolerance, word);
        return false;
    }
    return true;
}

}  // namespace

void AddToleranceFlag(CLI::App& command, std::vector<std::string>& words, const eBounds& bounds) {
    command
        .add_option("--tolerance", words,
                    "mm=NUMBER (" + RealText(*bounds.metres / kMetresPerMillimetre) +
                        " without), degrees=NUMBER (" + RealText(*bounds.degrees) + ") or db=NUMBER (" +
                        RealText(*bounds.decibels) + "); may be repeated")
        ->type_name("KIND=NUMBER")
        ->allow_extra_args(false);
}

bool TakeBounds(const std::vector<std::string>& words, const eBounds& bounds) {
    for (const std::string& word : words) {
        if (!TakeBound(word, bounds)) {
            return false;
        }
    }
    return true;
}

}  // namespace cli
