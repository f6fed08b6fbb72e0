#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// `zyrexport options`: shows the stored options, or changes some of them.
void AddOptionsCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
