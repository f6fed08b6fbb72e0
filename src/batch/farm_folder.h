// What a farm works on, as the build folder of a batch keeps it in its folder "slurm".
//
//   run.json       which jobs work on which scenes
//   N.sh           the exports of task N of the array, one after the other
//   task.sh        what each task runs
//   closing.sh     what the job behind them runs
//   *.log          what each has printed
//   end            the exit status of the closing job's build; it is there when all is done
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "batch/build_file.h"
#include "batch/results.h"
#include "batch/scene_list.h"

namespace batch {

struct eFarmRun {
    std::string arrayJob;  // as the farm numbers its jobs
    std::string closingJob;
    std::vector<eBatchScene> scenes;  // of the whole batch; their flags are not kept
    std::vector<std::string> handed;  // paths of those that were out of date
    eReportTimes before;
    std::string report;  // where the summary goes too; absolute, empty for nowhere
};

// Where in a build folder a name of the farm's folder is.
std::string FarmFile(const std::string& buildFolder, const std::string& name);

// Makes the farm's folder anew, with the scripts for the scenes that are out of date, in at most `tasks`
// tasks of about the same size. The number of tasks; nothing if something can't be written.
std::optional<std::size_t> WriteFarmScripts(const eBuildWork& work, const std::vector<std::string>& handed,
                                            std::size_t tasks);

// False if it can't be written.
bool KeepFarmRun(const std::string& buildFolder, const eFarmRun& run);
void ForgetFarmRun(const std::string& buildFolder);
// Nothing if no farm has ever worked on the folder.
std::optional<eFarmRun> ReadFarmRun(const std::string& buildFolder);

// The exit status of the closing job's build; nothing before the end.
std::optional<int> FarmEnd(const std::string& buildFolder);

// How many of the scenes have been exported, as the closing job will enter it.
std::size_t CountDone(const std::string& buildFolder, const std::vector<std::string>& handed);

// Forgets exports that a farm or an interrupted call has done but not entered.
void ForgetUnentered(const std::string& buildFolder, const std::vector<eBatchScene>& scenes);

}  // namespace batch
