#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// `zyrexport why SCENE NODE`: says what an export makes of a node, and by which rule.
void AddWhyCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
