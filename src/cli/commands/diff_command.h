#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// Adds `zyrexport diff OLD NEW`.
void AddDiffCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
