#pragma once

#include <string>
#include <vector>

#include "batch/results.h"

namespace cli {

// Prints what came of a batch and keeps it as JSON in its build folder, and in `report` unless that is empty.
// The exit code of the program, given that of the build.
int TellBatch(const std::string& buildFolder, const std::string& report,
              const std::vector<batch::eSceneResult>& results, int buildStatus);

}  // namespace cli
