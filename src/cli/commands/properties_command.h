#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// `zyrexport properties SCENE`: prints the properties of all nodes as the text that may lie beside the scene.
void AddPropertiesCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
