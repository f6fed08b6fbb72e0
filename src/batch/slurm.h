// Slurm, as its commands know it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/bilingual.h"

namespace batch {

struct eSlurmOrder {
    std::string buildFolder;
    std::vector<std::string> flags;  // of sbatch, as the user gave them
    std::size_t tasks = 0;
    int atATime = 0;  // 0: as many as the farm has room for
};

struct eSlurmJobs {
    std::string array;
    std::string closing;
};

// Hands the scripts of the farm's folder over: an array of tasks, which is begun again where a machine is
// lost, and the job behind them. Nothing, and why, if Slurm takes them not; then none of both is left in its
// queue.
std::optional<eSlurmJobs> HandOver(const eSlurmOrder& order, eBilingual& problem);

// What the queue holds of a job: how many tasks by their state, as Slurm spells it ("RUNNING").
using eSlurmStates = std::map<std::string, int>;

struct eSlurmQueue {
    std::map<std::string, eSlurmStates> jobs;  // of this user, by number

    bool Holds(const std::string& job) const { return jobs.contains(job); }
};

// Nothing, and why, while the queue can't be asked.
std::optional<eSlurmQueue> AskQueue(const std::string& buildFolder, eBilingual& problem);

}  // namespace batch
