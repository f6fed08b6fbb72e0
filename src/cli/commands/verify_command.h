#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

#include "cli/flags/export_flags.h"

namespace cli {

// Adds `zyrexport verify SCENE`.
void AddVerifyCommand(CLI::App& program, std::function<int()>& action);

// Compares the files that lie below the resource root with the scene, and prints the table. `exitCode` is
// that of the export that wrote them, and is given back where nothing lies beyond the tolerances.
int VerifyAfterExport(const eExportFlags& flags, int exitCode);

}  // namespace cli
