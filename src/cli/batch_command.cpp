#include "cli/batch_command.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "batch/build_file.h"
#include "batch/conflicts.h"
#include "batch/results.h"
#include "batch/scene_list.h"
#include "cli/exit_code.h"
#include "cli/export_flags.h"
#include "cli/native_file.h"
#include "cli/run_option_flags.h"
#include "cli/terminal_text.h"
#include "platform/native_path.h"
#include "platform/own_program.h"
#include "platform/run_program.h"
#include "platform/terminal.h"
#include "platform/utf8_path.h"

namespace cli {

namespace {

struct eArguments {
    std::vector<std::string> words;
    std::vector<CLI::Option*> exportFlags;  // those that each export gets
    eExportFlags flags;                     // only to see that they are well formed
    std::string buildFolder = "zyrexport-batch";
    std::string report;
    int jobs = 0;  // 0: as many as there are cores
    bool keepsGoing = false;
    bool keepsManifests = false;
};

constexpr int kInterrupted = 130;

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
        if (!FindScenes() || !WriteBuildFile()) {
            return kExitUsage;
        }
        batch::ForgetOutdated(folder, list.scenes, arguments.keepsManifests);
        // An interrupt goes to ninja, which ends its exports; this program still tells what came of them.
        platform::CatchInterrupts();
        if (RunNinja("models", true, true) == kNotStarted || HasConflicts()) {
            return kExitUsage;
        }
        const batch::eReportTimes before = batch::ReportTimes(folder, list.scenes);
        const int status = platform::WasInterrupted()
                               ? kInterrupted
                               : RunNinja("exports", arguments.flags.quiet, arguments.keepsGoing);
        return Tell(batch::ReadResults(folder, list.scenes, before), status);
    }

private:
    static constexpr int kNotStarted = -1;

    bool FindScenes() {
        list = batch::ListScenes(arguments.words);
        for (const std::string& problem : list.problems) {
            TellError(problem);
        }
        return list.problems.empty();
    }

    bool WriteBuildFile() {
        std::error_code error;
        std::filesystem::create_directories(platform::PathFromUtf8(folder), error);
        const std::string text =
            batch::BuildFileText({.program = platform::OwnProgram(),
                                  .folder = platform::Utf8FromPath(std::filesystem::current_path()),
                                  .buildFolder = folder,
                                  .flags = GivenFlags(arguments.exportFlags),
                                  .scenes = list.scenes,
                                  .keepsManifests = arguments.keepsManifests});
        const std::string problem = error ? error.message() : WriteNativeFile(folder + "/build.ninja", text);
        if (!problem.empty()) {
            TellError(arguments.buildFolder + ": " + problem);
        }
        return problem.empty();
    }

    // Its exit status; kNotStarted, and told, where there is no ninja.
    int RunNinja(const char* target, bool isQuiet, bool keepsGoing) const {
        std::vector<std::string> words = {"ninja", target};
        if (isQuiet) {
            words.emplace_back("--quiet");
        }
        if (arguments.jobs > 0) {
            words.insert(words.end(), {"-j", std::to_string(arguments.jobs)});
        }
        if (keepsGoing) {
            words.insert(words.end(), {"-k", "0"});
        }
        const std::optional<int> status = platform::RunProgram(words, folder);
        if (!status) {
            TellError("ninja can't be started: on Debian it is in the package ninja-build");
        }
        return status.value_or(kNotStarted);
    }

    bool HasConflicts() const {
        const std::vector<std::string> conflicts = batch::FindConflicts(folder, list.scenes);
        for (const std::string& conflict : conflicts) {
            TellError(conflict);
        }
        return !conflicts.empty();
    }

    // False if it can't be written, which is told.
    static bool Keep(const std::string& file, const std::string& text) {
        const std::string problem = WriteNativeFile(file, text);
        if (!problem.empty()) {
            TellError(file + ": " + problem);
        }
        return problem.empty();
    }

    int Tell(const std::vector<batch::eSceneResult>& results, int ninjaStatus) const {
        std::printf("%s", batch::ResultText(results).c_str());
        std::fflush(stdout);
        constexpr int kIndent = 2;
        const std::string text = batch::ResultJson(results).dump(
                                     kIndent, ' ', false, nlohmann::ordered_json::error_handler_t::replace) +
                                 "\n";
        const bool isKept = Keep(folder + "/summary.json", text);
        const bool isReported = arguments.report.empty() || Keep(arguments.report, text);
        return ExitCode(results, ninjaStatus, isKept && isReported);
    }

    static int ExitCode(const std::vector<batch::eSceneResult>& results, int ninjaStatus, bool isKept) {
        if (platform::WasInterrupted() || ninjaStatus == kInterrupted) {
            return kExitCancelled;
        }
        if (ninjaStatus != 0) {
            return kExitFatal;
        }
        const bool hasErrors = std::ranges::any_of(
            results, [](const batch::eSceneResult& result) { return result.exitCode != kExitDone; });
        return hasErrors || !isKept ? kExitErrors : kExitDone;
    }

    const eArguments& arguments;
    const std::string folder;
    batch::eSceneList list;
};

}  // namespace

void AddBatchCommand(CLI::App& program, std::function<int()>& action) {
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command =
        *program.add_subcommand("batch", "Export many scenes: those that are out of date, on all cores");
    command
        .add_option("LIST", arguments->words,
                    "Scene files, folders, patterns in quotes ('art/**/*.glb'), or a list (NAME.json)")
        ->required();
    AddRunFlags(command, arguments->flags);
    for (CLI::Option* flag : command.get_options([](const CLI::Option* option) {
             return !option->get_lnames().empty() && option->get_lnames().front() != "help";
         })) {
        arguments->exportFlags.push_back(flag);
    }
    command.add_option("--build", arguments->buildFolder, "Folder for what is kept between two calls")
        ->type_name("DIR")
        ->capture_default_str();
    command.add_option("--jobs,-j", arguments->jobs, "Exports at a time, instead of one for each core")
        ->type_name("N")
        ->check(CLI::PositiveNumber);
    command.add_flag("--keep-going,-k", arguments->keepsGoing, "Go on after a scene that can't be exported");
    command.add_flag("--manifests", arguments->keepsManifests,
                     "Keep a manifest of each scene for `zyrexport check` beside its report");
    command.add_option("--report", arguments->report, "Write what came of each scene as JSON")
        ->type_name("FILE");
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
        "errors in scenes, 130 cancelled.");
    command.callback([arguments, &action] { action = [arguments] { return eBatch(*arguments).Run(); }; });
}

}  // namespace cli
