#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace cli {

// What is told of a command line that can't be read, and where to read more, in the terminal's language; for
// CLI::App::failure_message.
std::string UsageErrorText(const CLI::App* program, const CLI::Error& error);

}  // namespace cli
