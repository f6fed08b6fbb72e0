#pragma once

#include <CLI/CLI.hpp>

namespace cli {

// The help of a command without the notes of the option library that a user has no use for: the long list of
// flags that exclude each other, and the value that a --no-... flag stands for.
class eHelpFormat : public CLI::Formatter {
public:
    std::string make_option_name(const CLI::Option* option, bool isPositional) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
};

}  // namespace cli
