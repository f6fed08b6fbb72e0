#pragma once

#include "cli/export_flags.h"

namespace cli {

// Loads the scene, exports it, writes the report; the exit code of the program.
int RunExport(const eExportFlags& flags);

}  // namespace cli
