#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// Adds `zyrexport check MANIFEST`.
void AddCheckCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
