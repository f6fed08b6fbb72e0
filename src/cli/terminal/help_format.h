#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace cli {

// The help of a command, in the terminal's language, without the notes of the option library that a user has
// no use for: the long list of flags that exclude each other, and the value that a --no-... flag stands for.
// help_table.inc is the only place of the Russian texts; one that it lacks stays English.
class eHelpFormat : public CLI::Formatter {
public:
    eHelpFormat();

    std::string make_option_name(const CLI::Option* option, bool isPositional) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_option_desc(const CLI::Option* option) const override;
    std::string make_group(std::string group, bool isPositional,
                           std::vector<const CLI::Option*> options) const override;
    std::string make_description(const CLI::App* command) const override;
    std::string make_subcommands(const CLI::App* program, CLI::AppFormatMode mode) const override;
    std::string make_subcommand(const CLI::App* command) const override;
    std::string make_footer(const CLI::App* command) const override;
};

}  // namespace cli
