#include "cli/terminal/help_format.h"

#include <string_view>

namespace cli {

std::string eHelpFormat::make_option_name(const CLI::Option* option, bool isPositional) const {
    constexpr std::string_view kNegation = "{false}";
    std::string name = Formatter::make_option_name(option, isPositional);
    if (const std::size_t place = name.find(kNegation); place != std::string::npos) {
        name.erase(place, kNegation.size());
    }
    return name;
}

std::string eHelpFormat::make_option_opts(const CLI::Option* option) const {
    const std::string notes = Formatter::make_option_opts(option);
    return notes.substr(0, notes.find(" Excludes:"));
}

}  // namespace cli
