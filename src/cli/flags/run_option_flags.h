#pragma once

#include <CLI/CLI.hpp>

#include "cli/flags/export_flags.h"

namespace cli {

// Adds the flags that say how a run works, whether or not it writes: the options, how the scene is
// understood, `--silent` (which excludes those), `--config`, `--drive`, `--lock-wait`, `--quiet` and
// `--language`. Gives back `--silent`.
CLI::Option* AddRunFlags(CLI::App& command, eExportFlags& flags);

// Adds `--sources FILE`.
CLI::Option* AddSourcesFlag(CLI::App& command, eExportFlags& flags);

}  // namespace cli
