#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// `zyrexport completion SHELL`: prints what completes the program's commands and flags in bash, zsh or fish.
// Add it behind all others.
void AddCompletionCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
