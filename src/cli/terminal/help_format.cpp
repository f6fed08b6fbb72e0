#include "cli/terminal/help_format.h"

#include <optional>
#include <sstream>
#include <string_view>
#include <utility>

#include "cli/terminal/terminal_language.h"
#include "messages/phrase_match.h"

namespace cli {

namespace {

struct eHelpRow {
    const char* english;
    const char* russian;
};

#define ZYR_HELP(english, russian) {english, russian},
constexpr eHelpRow kHelp[] = {
#include "cli/terminal/help_table.inc"
};
#undef ZYR_HELP

std::string Told(const std::string& english) {
    if (TerminalLanguage() == eLanguage::Russian) {
        for (const eHelpRow& row : kHelp) {
            if (std::optional<std::string> russian =
                    Retold(english, row.english, row.russian, eLanguage::Russian)) {
                return *std::move(russian);
            }
        }
    }
    return english;
}

// A text of the library that ends its last line.
std::string ToldLine(const std::string& english) {
    return english.empty() ? english : Told(english.substr(0, english.size() - 1)) + "\n";
}

}  // namespace

eHelpFormat::eHelpFormat() {
    for (const char* word : {"Usage", "OPTIONS", "SUBCOMMAND", "Positionals", "Needs"}) {
        label(word, Told(word));
    }
}

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

std::string eHelpFormat::make_option_desc(const CLI::Option* option) const {
    return Told(Formatter::make_option_desc(option));
}

std::string eHelpFormat::make_group(std::string group, bool isPositional,
                                    std::vector<const CLI::Option*> options) const {
    return Formatter::make_group(Told(group), isPositional, std::move(options));
}

std::string eHelpFormat::make_description(const CLI::App* command) const {
    return ToldLine(Formatter::make_description(command));
}

std::string eHelpFormat::make_subcommands(const CLI::App* program, CLI::AppFormatMode mode) const {
    constexpr std::string_view kHeading = "\nSubcommands:";
    std::string list = Formatter::make_subcommands(program, mode);
    if (list.starts_with(kHeading)) {
        list.replace(0, kHeading.size(), "\n" + Told("Subcommands") + ":");
    }
    return list;
}

std::string eHelpFormat::make_subcommand(const CLI::App* command) const {
    std::stringstream line;
    CLI::detail::format_help(line, command->get_display_name(true), Told(command->get_description()),
                             get_column_width());
    return line.str();
}

std::string eHelpFormat::make_footer(const CLI::App* command) const {
    return ToldLine(Formatter::make_footer(command));
}

}  // namespace cli
