#pragma once

#include "cli/flags/export_flags.h"
#include "cli/run/dry_run.h"

namespace cli {

// Loads the scene, exports it, writes the report; the exit code of the program.
int RunExport(const eExportFlags& flags);

// The same without a trace on disk; it tells no closing line and writes no report.
int RunWithoutWriting(const eExportFlags& flags, eDryRun& dry);

}  // namespace cli
