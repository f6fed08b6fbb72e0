#include "batch/slurm.h"

#include <fstream>
#include <iterator>
#include <sstream>

#include "batch/farm_folder.h"
#include "batch/shell_word.h"
#include "messages/utf8_words.h"
#include "platform/run_program.h"
#include "platform/utf8_path.h"

namespace batch {

namespace {

std::string Read(const std::string& file) {
    std::ifstream stream(platform::PathFromUtf8(file), std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    text.erase(text.find_last_not_of('\n') + 1);
    return text;
}

// What a command of Slurm answers; nothing, and what it says to that, where it fails.
std::optional<std::string> Ask(const std::string& buildFolder, const std::string& command,
                               eBilingual& problem) {
    const std::string answer = FarmFile(buildFolder, "answer");
    const std::string words = FarmFile(buildFolder, "problem");
    const std::string whole = command + " > " + ShellWord(answer) + " 2> " + ShellWord(words);
    const std::optional<int> status = platform::RunProgram({"sh", "-c", whole}, buildFolder);
    if (status == 0) {
        return Read(answer);
    }
    const std::string said = Read(words);
    problem = status ? eBilingual{said, said} : Utf8Words(ePhrase::ShellMissing);
    return std::nullopt;
}

std::string Submission(const eSlurmOrder& order, const std::string& name, const std::string& log) {
    std::string command = "sbatch --parsable --requeue --open-mode=append --job-name=zyrexport --output=" +
                          ShellWord(FarmFile(order.buildFolder, log));
    for (const std::string& flag : order.flags) {
        command += " " + ShellWord(flag);
    }
    return command + name;
}

// A cluster's name may stand behind the number.
std::string JobNumber(const std::string& answer) {
    return answer.substr(0, answer.find(';'));
}

}  // namespace

std::optional<eSlurmJobs> HandOver(const eSlurmOrder& order, eBilingual& problem) {
    const std::string atATime = order.atATime > 0 ? "%" + std::to_string(order.atATime) : std::string();
    const std::optional<std::string> array =
        Ask(order.buildFolder,
            Submission(order, " --array=1-" + std::to_string(order.tasks) + atATime, "%a.log") + " " +
                ShellWord(FarmFile(order.buildFolder, "task.sh")),
            problem);
    if (!array) {
        return std::nullopt;
    }
    eSlurmJobs jobs{JobNumber(*array), {}};
    const std::optional<std::string> closing =
        Ask(order.buildFolder,
            Submission(order, " --dependency=afterany:" + jobs.array, "closing.log") + " " +
                ShellWord(FarmFile(order.buildFolder, "closing.sh")),
            problem);
    if (!closing) {
        eBilingual ignored;
        Ask(order.buildFolder, "scancel " + jobs.array, ignored);
        return std::nullopt;
    }
    jobs.closing = JobNumber(*closing);
    return jobs;
}

std::optional<eSlurmQueue> AskQueue(const std::string& buildFolder, eBilingual& problem) {
    const std::optional<std::string> answer =
        Ask(buildFolder, "squeue --me --noheader --array --format='%F %T'", problem);
    if (!answer) {
        return std::nullopt;
    }
    eSlurmQueue queue;
    std::istringstream lines(*answer);
    for (std::string job, state; lines >> job >> state;) {
        ++queue.jobs[job][state];
    }
    return queue;
}

}  // namespace batch
