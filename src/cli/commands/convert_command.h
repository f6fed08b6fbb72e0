#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// `zyrexport convert SCENE OUT.scene.json`: writes an imported scene as a scene document.
void AddConvertCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
