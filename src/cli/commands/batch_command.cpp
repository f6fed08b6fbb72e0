#include "cli/commands/batch_command.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "base/ansi.h"
#include "batch/build_file.h"
#include "batch/conflicts.h"
#include "batch/farm_folder.h"
#include "batch/results.h"
#include "batch/scene_list.h"
#include "cli/flags/export_flags.h"
#include "cli/flags/run_option_flags.h"
#include "cli/run/batch_summary.h"
#include "cli/run/farm_call.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/native_file.h"
#include "cli/terminal/terminal_text.h"
#include "platform/folder_lock.h"
#include "platform/native_path.h"
#include "platform/own_program.h"
#include "platform/run_program.h"
#include "platform/terminal.h"
#include "platform/utf8_path.h"

namespace cli {

namespace {

constexpr const char* kNinja = "ninja";
constexpr const char* kSlurm = "slurm";

struct eArguments {
    std::vector<std::string> words;
    std::vector<CLI::Option*> exportFlags;  // those that each export gets
    eExportFlags flags;                     // only to see that they are well formed
    std::string buildFolder = "zyrexport-batch";
    std::string report;
    int jobs = 0;  // 0: as many as there are cores
    bool keepsGoing = false;
    bool keepsManifests = false;
    std::string engine = kNinja;
    bool returnsAtOnce = false;
    bool asksState = false;
    int tasks = eFarmFlags().tasks;
    std::vector<std::string> sbatch;
};

// An export of a batch is always quiet, and its files are the same in all languages.
bool CountsForExports(const CLI::Option* option) {
    const std::string name = option->get_lnames().empty() ? "" : option->get_lnames().front();
    return !name.empty() && name != "help" && name != "quiet" && name != "language";
}

// A switch is told by what it was set to, anything else by its values.
std::vector<std::string> WordsOf(const CLI::Option& flag) {
    const std::string name = flag.get_lnames().front();
    if (flag.get_items_expected_max() == 0) {
        return {(flag.results().back() == "false" ? "--no-" : "--") + name};
    }
    std::vector<std::string> words;
    for (const std::string& value : flag.results()) {
        words.insert(words.end(), {"--" + name, value});
    }
    return words;
}

std::vector<std::string> GivenFlags(const std::vector<CLI::Option*>& flags) {
    std::vector<std::string> words;
    for (const CLI::Option* flag : flags) {
        if (flag->count() > 0) {
            const std::vector<std::string> own = WordsOf(*flag);
            words.insert(words.end(), own.begin(), own.end());
        }
    }
    return words;
}

// One call, from the words to the summary.
class eBatch {
public:
    explicit eBatch(const eArguments& ownArguments)
        : arguments(ownArguments), folder(platform::AbsoluteNative(ownArguments.buildFolder)) {}

    int Run() {
        if (!FindScenes() || !IsFree() || !WriteBuildFile()) {
            return kExitUsage;
        }
        batch::ForgetUnentered(folder, work.scenes);
        batch::ForgetOutdated(folder, work.scenes, work.keepsManifests);
        // An interrupt goes to ninja, which ends its exports; this program still tells what came of them.
        platform::CatchInterrupts();
        if (RunNinja("models", true, true) == kNotStarted || HasConflicts()) {
            return kExitUsage;
        }
        if (arguments.engine == kSlurm) {
            return ExportOnFarm(work, FarmFlags());
        }
        const batch::eReportTimes before = batch::ReportTimes(folder, work.scenes);
        const int status = platform::WasInterrupted()
                               ? kExitCancelled
                               : RunNinja("exports", arguments.flags.quiet, arguments.keepsGoing);
        return TellBatch(folder, arguments.report, batch::ReadResults(folder, work.scenes, before), status);
    }

private:
    static constexpr int kNotStarted = -1;

    bool FindScenes() {
        batch::eSceneList list = batch::ListScenes(arguments.words);
        for (const eBilingual& problem : list.problems) {
            TellError(problem);
        }
        work = {.program = platform::OwnProgram(),
                .folder = platform::Utf8FromPath(std::filesystem::current_path()),
                .buildFolder = folder,
                .flags = GivenFlags(arguments.exportFlags),
                .scenes = std::move(list.scenes),
                .keepsManifests = arguments.keepsManifests};
        return list.problems.empty();
    }

    // False, and told, while another call or a farm works on the folder.
    bool IsFree() {
        std::string owner;
        if (lock.Take(folder, std::chrono::milliseconds(0), owner) == platform::eLockAnswer::InUse) {
            TellError(ePhrase::BatchInUse, arguments.buildFolder, ToUtf8(owner));
            return false;
        }
        lock.KeepFolder();
        return !IsFarmAtWork(folder);
    }

    bool WriteBuildFile() const {
        const eBilingual problem = WriteNativeFile(folder + "/build.ninja", batch::BuildFileText(work));
        if (!problem.IsEmpty()) {
            TellError(problem.At(arguments.buildFolder));
        }
        return problem.IsEmpty();
    }

    // Its exit status; kNotStarted, and told, where there is no ninja.
    int RunNinja(const char* target, bool isQuiet, bool keepsGoing) const {
        std::vector<std::string> words = {"ninja", target};
        if (isQuiet) {
            words.emplace_back("--quiet");
        }
        if (arguments.jobs > 0 && arguments.engine != kSlurm) {
            words.insert(words.end(), {"-j", std::to_string(arguments.jobs)});
        }
        if (keepsGoing) {
            words.insert(words.end(), {"-k", "0"});
        }
        const std::optional<int> status = platform::RunProgram(words, folder);
        if (!status) {
            TellError(ePhrase::NinjaMissing);
        }
        return status.value_or(kNotStarted);
    }

    bool HasConflicts() const {
        const std::vector<eBilingual> conflicts = batch::FindConflicts(folder, work.scenes);
        for (const eBilingual& conflict : conflicts) {
            TellError(conflict);
        }
        return !conflicts.empty();
    }

    eFarmFlags FarmFlags() const {
        return {.sbatch = arguments.sbatch,
                .tasks = arguments.tasks,
                .jobs = arguments.jobs,
                .waits = !arguments.returnsAtOnce,
                .quiet = arguments.flags.quiet,
                .report = arguments.report.empty() ? "" : platform::AbsoluteNative(arguments.report)};
    }

    const eArguments& arguments;
    const std::string folder;
    platform::eFolderLock lock;
    batch::eBuildWork work;
};

// Flags of the work on a farm.
void AddFarmFlags(CLI::App& command, eArguments& arguments) {
    command
        .add_option("--engine", arguments.engine, "Who shares the work out: ninja here, or slurm on its farm")
        ->type_name("NAME")
        ->check(CLI::IsMember({kNinja, kSlurm}))
        ->capture_default_str();
    command.add_flag("--no-wait", arguments.returnsAtOnce,
                     "With slurm: return as soon as the work is handed over");
    command.add_flag("--state", arguments.asksState,
                     "Tell how far the farm is with the build folder, or the summary");
    command
        .add_option("--tasks", arguments.tasks,
                    "With slurm: tasks that the scenes are shared out to, at most")
        ->type_name("N")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
    command
        .add_option("--sbatch", arguments.sbatch,
                    "With slurm: a flag for sbatch, as --sbatch=--partition=night")
        ->type_name("FLAG")
        ->allow_extra_args(false);
}

int RunBatch(const eArguments& arguments) {
    if (arguments.asksState) {
        return TellFarmState(platform::AbsoluteNative(arguments.buildFolder));
    }
    if (arguments.words.empty()) {
        TellError(ePhrase::UsageBatch);
        return kExitUsage;
    }
    return eBatch(arguments).Run();
}

}  // namespace

void AddBatchCommand(CLI::App& program, std::function<int()>& action) {
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command =
        *program.add_subcommand("batch", "Export many scenes: those that are out of date, on all cores");
    command.add_option("LIST", arguments->words,
                       "Scene files, folders, patterns in quotes ('art/**/*.glb'), or a list (NAME.json)");
    AddRunFlags(command, arguments->flags);
    for (CLI::Option* flag : command.get_options(&CountsForExports)) {
        arguments->exportFlags.push_back(flag);
    }
    command.add_option("--build", arguments->buildFolder, "Folder for what is kept between two calls")
        ->type_name("DIR")
        ->capture_default_str();
    command
        .add_option("--jobs,-j", arguments->jobs,
                    "Exports at a time, instead of one for each core; tasks at a time on a farm")
        ->type_name("N")
        ->check(CLI::PositiveNumber);
    command.add_flag("--keep-going,-k", arguments->keepsGoing, "Go on after a scene that can't be exported");
    command.add_flag("--manifests", arguments->keepsManifests,
                     "Keep a manifest of each scene for `zyrexport check` beside its report");
    command.add_option("--report", arguments->report, "Write what came of each scene as JSON")
        ->type_name("FILE");
    AddFarmFlags(command, *arguments);
    command.footer(
        "The flags of export count for all scenes; a list has flags of its own for single ones:\n"
        R"({"schema": 1, "flags": ["--no-animation"], "scenes": ["art/*.glb",)"
        "\n"
        R"( {"scene": "bought/fox.glb", "flags": ["--as-model", "test/fox"]}]})"
        "\n"
        "A scene is exported again when it, a picture, its properties, the options, its flags or the program "
        "has\n"
        "changed, or a file is gone that it has written. Stored options are read and never changed. Scenes "
        "that\n"
        "write into one folder are told before anything runs.\n"
        "Exit status: 0 done, 1 a scene can't be exported, 2 wrong usage or a conflict (nothing ran), 3 done "
        "with\n"
        "errors in scenes, 6 the farm is at work (--state), 130 cancelled.");
    command.callback([arguments, &action] { action = [arguments] { return RunBatch(*arguments); }; });
}

}  // namespace cli
