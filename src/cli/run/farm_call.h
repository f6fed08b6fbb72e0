#pragma once

#include <string>
#include <vector>

#include "batch/build_file.h"

namespace cli {

struct eFarmFlags {
    std::vector<std::string> sbatch;  // flags for it
    int tasks = 500;                  // at most; a farm takes 1000 in one array unless it was told otherwise
    int jobs = 0;                     // tasks at a time; 0: as many as there is room for
    bool waits = true;
    bool quiet = false;
    std::string report;  // absolute, or empty
};

// Hands the scenes of a batch that are out of date to the farm, and tells what came of them if it waits for
// the end; the exit code of the program. The build file is written and nothing stands in the way.
int ExportOnFarm(const batch::eBuildWork& work, const eFarmFlags& flags);

// How far the farm is, or what came of the scenes if it is done.
int TellFarmState(const std::string& buildFolder);

// True, and told, if a farm works on the build folder or may do so.
bool IsFarmAtWork(const std::string& buildFolder);

}  // namespace cli
