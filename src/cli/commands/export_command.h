#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// `zyrexport export SCENE`: the main job.
void AddExportCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
