#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// `zyrexport pak FOLDER OUT.pak`: packs a resource folder.
void AddPakCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
