#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// `zyrexport plan SCENE...`: says what an export would do to each file, and why.
void AddPlanCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
