#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// `zyrexport lint SCENE...`: tells what is wrong with scenes and what may be a slip, and writes nothing.
void AddLintCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
