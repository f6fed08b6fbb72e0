#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// `zyrexport inspect PATH...`: says what is in written files.
void AddInspectCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
