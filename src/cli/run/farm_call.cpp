#include "cli/run/farm_call.h"

#include <chrono>
#include <optional>
#include <thread>

#include "batch/farm_folder.h"
#include "batch/out_of_date.h"
#include "batch/results.h"
#include "batch/slurm.h"
#include "cli/run/batch_summary.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/terminal_text.h"
#include "platform/terminal.h"

namespace cli {

namespace {

using batch::eFarmRun;

int TellEnd(const std::string& buildFolder, const eFarmRun& run, int status) {
    return TellBatch(buildFolder, run.report, batch::ReadResults(buildFolder, run.scenes, run.before),
                     status);
}

// States as the farm spells them.
eBilingual StateText(const batch::eSlurmQueue& queue, const std::string& job) {
    const auto states = queue.jobs.find(job);
    if (states == queue.jobs.end()) {
        return Utf8Words(ePhrase::FarmJobDone);
    }
    eBilingual text;
    for (const auto& [state, count] : states->second) {
        const std::string tasks = std::to_string(count) + " " + state;
        text.AddToList({tasks, tasks});
    }
    return text;
}

void TellProgress(const std::string& buildFolder, const eFarmRun& run, const batch::eSlurmQueue& queue) {
    Print(Utf8Words(ePhrase::FarmProgress, batch::CountDone(buildFolder, run.handed), run.handed.size(),
                    run.arrayJob, StateText(queue, run.arrayJob), run.closingJob,
                    StateText(queue, run.closingJob)));
}

void TellLost(const std::string& buildFolder, const eFarmRun& run) {
    TellError(ePhrase::FarmLost, run.closingJob, batch::FarmFile(buildFolder, "closing.log"));
}

void TellHowToGoOn(const std::string& buildFolder, const eFarmRun& run) {
    Print(Utf8Words(ePhrase::FarmWorks, run.handed.size(), buildFolder, run.arrayJob, run.closingJob));
}

// Looks after a farm until its end. A queue that can't be asked for a while is waited for.
class eFarmWatch {
public:
    eFarmWatch(const std::string& folder, const eFarmRun& farmRun, bool isQuiet)
        : buildFolder(folder), run(farmRun), quiet(isQuiet) {}

    int Wait() {
        constexpr std::chrono::seconds kPause(1);
        constexpr int kPausesPerQuestion = 5;
        for (int pause = 0; !platform::WasInterrupted(); ++pause) {
            if (const std::optional<int> end = batch::FarmEnd(buildFolder)) {
                return TellEnd(buildFolder, run, *end);
            }
            if (pause % kPausesPerQuestion == 0 && IsLost()) {
                TellLost(buildFolder, run);
                return kExitFatal;
            }
            std::this_thread::sleep_for(kPause);
        }
        TellHowToGoOn(buildFolder, run);
        return kExitCancelled;
    }

private:
    // The closing job leaves the queue and its end behind; the end may take a while to be seen here.
    bool IsLost() {
        eBilingual problem;
        const std::optional<batch::eSlurmQueue> queue = batch::AskQueue(buildFolder, problem);
        if (!queue) {
            return false;
        }
        if (!quiet) {
            TellProgress(buildFolder, run, *queue);
        }
        constexpr int kEnough = 3;
        timesMissed = queue->Holds(run.closingJob) ? 0 : timesMissed + 1;
        return timesMissed == kEnough;
    }

    const std::string& buildFolder;
    const eFarmRun& run;
    const bool quiet;
    int timesMissed = 0;  // how often in a row the queue did not have the closing job
};

// False if the farm does not take the work, which is told. What it works on stands in its folder before the
// first job begins, and once more with the numbers of the jobs.
bool HandOver(const batch::eBuildWork& work, const eFarmFlags& flags, eFarmRun& run) {
    const std::string& folder = work.buildFolder;
    const std::optional<std::size_t> tasks =
        batch::WriteFarmScripts(work, run.handed, static_cast<std::size_t>(flags.tasks));
    if (!tasks || !batch::KeepFarmRun(folder, run)) {
        TellError(ePhrase::PathNotWritten, batch::FarmFile(folder, ""));
        return false;
    }
    eBilingual problem;
    const std::optional<batch::eSlurmJobs> jobs =
        batch::HandOver({folder, flags.sbatch, *tasks, flags.jobs}, problem);
    if (!jobs) {
        TellError(ePhrase::FarmRefuses, problem);
        return false;
    }
    run.arrayJob = jobs->array;
    run.closingJob = jobs->closing;
    const bool isKept = batch::KeepFarmRun(folder, run);
    if (!isKept) {
        TellError(ePhrase::FarmNotNoted, batch::FarmFile(folder, "run.json"), run.arrayJob, run.closingJob);
    }
    return isKept;
}

}  // namespace

int ExportOnFarm(const batch::eBuildWork& work, const eFarmFlags& flags) {
    const std::string& folder = work.buildFolder;
    const std::optional<std::vector<std::string>> handed = batch::OutOfDate(folder, work.scenes);
    if (!handed) {
        TellError(ePhrase::NinjaUnsure);
        return kExitFatal;
    }
    eFarmRun run{.arrayJob = {},
                 .closingJob = {},
                 .scenes = work.scenes,
                 .handed = *handed,
                 .before = batch::ReportTimes(folder, work.scenes),
                 .report = flags.report};
    if (handed->empty()) {
        return TellEnd(folder, run, 0);
    }
    if (!HandOver(work, flags, run)) {
        batch::ForgetFarmRun(folder);
        return kExitFatal;
    }
    if (!flags.waits) {
        TellHowToGoOn(folder, run);
        return kExitDone;
    }
    return eFarmWatch(folder, run, flags.quiet).Wait();
}

int TellFarmState(const std::string& buildFolder) {
    const std::optional<eFarmRun> run = batch::ReadFarmRun(buildFolder);
    if (!run) {
        TellError(ePhrase::FarmNone, buildFolder);
        return kExitUsage;
    }
    if (const std::optional<int> end = batch::FarmEnd(buildFolder)) {
        return TellEnd(buildFolder, *run, *end);
    }
    eBilingual problem;
    const std::optional<batch::eSlurmQueue> queue = batch::AskQueue(buildFolder, problem);
    if (!queue) {
        TellError(ePhrase::FarmSilent, problem);
        return kExitFatal;
    }
    if (!queue->Holds(run->closingJob)) {
        TellLost(buildFolder, *run);
        return kExitFatal;
    }
    TellProgress(buildFolder, *run, *queue);
    return kExitAtWork;
}

bool IsFarmAtWork(const std::string& buildFolder) {
    const std::optional<eFarmRun> run = batch::ReadFarmRun(buildFolder);
    if (!run || batch::FarmEnd(buildFolder)) {
        return false;
    }
    eBilingual problem;
    const std::optional<batch::eSlurmQueue> queue = batch::AskQueue(buildFolder, problem);
    if (queue && !queue->Holds(run->arrayJob) && !queue->Holds(run->closingJob)) {
        return false;
    }
    TellError(ePhrase::FarmAtWork, buildFolder, run->arrayJob, run->closingJob,
              queue ? eBilingual() : Utf8Words(ePhrase::FarmAtWorkPerhaps, problem));
    return true;
}

}  // namespace cli
