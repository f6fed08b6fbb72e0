#include "cli/commands/plan_command.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "answers/plan.h"
#include "base/ansi.h"
#include "cli/flags/run_option_flags.h"
#include "cli/run/dry_run.h"
#include "cli/run/export_run.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/native_file.h"
#include "cli/terminal/terminal_text.h"
#include "export/model_folders.h"
#include "platform/drive_table.h"
#include "platform/native_path.h"
#include "platform/path_lookup.h"
#include "platform/utf8_path.h"
#include "run/export.h"
#include "scene/scene_as_read.h"

namespace cli {

namespace {

struct eArguments {
    std::vector<std::string> scenes;
    eExportFlags flags;  // of each scene
    bool asJson = false;
    std::string modelList;
};

// Prints the plans, for people at once, as JSON at the end.
class ePlanOutput {
public:
    explicit ePlanOutput(bool json) : asJson(json) {}

    void Add(const answers::eRunPlan& plan) {
        if (asJson) {
            all.push_back(answers::DescribePlan(plan));
        } else {
            std::printf("%s%s", isFirst ? "" : "\n", answers::PlanText(plan, TerminalLanguage()).c_str());
        }
        isFirst = false;
    }
    void Finish() const {
        if (asJson) {
            constexpr int kIndent = 2;
            const auto handler = inspect::eDescription::error_handler_t::replace;
            std::printf("%s\n", all.dump(kIndent, ' ', false, handler).c_str());
        }
        std::fflush(stdout);
    }

private:
    bool asJson;
    bool isFirst = true;
    inspect::eDescription all = inspect::eDescription::array();
};

// An export makes a root that is not there as the user has typed it.
void SpellRoot(answers::eRunPlan& plan, const std::optional<std::string>& typed) {
    if (typed && !platform::HasDrive(*typed) && !std::filesystem::exists(platform::PathFromUtf8(plan.root))) {
        plan.SpellRoot(platform::AbsoluteNative(*typed));
    }
}

// Each scene by itself, against what lies there now.
int PlanScene(const eExportFlags& flags, ePlanOutput& output) {
    eDryRun dry;
    dry.tell = [&](const Export& run, const eRunRecord& record) {
        const bool isComplete = record.exitCode == kExitDone || record.exitCode == kExitErrors;
        answers::eRunPlan plan = answers::MakePlan(run, dry.files, dry.journal, isComplete);
        plan.scene = record.scene;
        SpellRoot(plan, flags.resourceRoot);
        output.Add(plan);
        if (record.exitCode == kExitFatal) {
            output.Finish();
        }
    };
    return RunWithoutWriting(flags, dry);
}

// The version of the keys of the list; rises when one is taken out or changes its meaning.
constexpr int kModelListSchema = 1;

std::string ModelListText(const Export& run, const std::string& scene) {
    inspect::eDescription list = {{"schema", kModelListSchema}, {"scene", scene}};
    list["models"] = inspect::eDescription::array();
    for (const eExportModel& model : run.scene->models) {
        if (const std::optional<eName> folder = FolderOfModel(run, *model.root)) {
            list["models"].push_back(
                {{"root", ToUtf8(model.root->GetName())}, {"folder", platform::DiskPath(folder->Text())}});
        }
    }
    constexpr int kIndent = 2;
    return list.dump(kIndent, ' ', false, inspect::eDescription::error_handler_t::replace) + "\n";
}

// Ends as soon as the scene is read, so that a build can ask it of thousands of scenes.
int ListModels(const eArguments& arguments) {
    if (arguments.scenes.size() != 1) {
        TellError(ePhrase::UsageOneScene);
        return kExitUsage;
    }
    eExportFlags flags = arguments.flags;
    flags.scene = arguments.scenes.front();
    flags.report = arguments.modelList;  // tells why, if the scene can't be read
    eBilingual problem;
    eDryRun dry;
    dry.isMute = true;
    dry.findsModelsOnly = true;
    dry.tell = [&](const Export& run, const eRunRecord&) {
        problem = WriteNativeFile(arguments.modelList, ModelListText(run, flags.scene));
    };
    const int exitCode = RunWithoutWriting(flags, dry);
    if (!problem.IsEmpty()) {
        TellError(problem.At(arguments.modelList));
    }
    // What the beginning of a run tells, the run tells.
    const int ownCode = exitCode == kExitErrors ? kExitDone : exitCode;
    return problem.IsEmpty() ? ownCode : kExitUsage;
}

int RunPlan(const eArguments& arguments) {
    if (!arguments.modelList.empty()) {
        return ListModels(arguments);
    }
    ePlanOutput output(arguments.asJson);
    int exitCode = kExitDone;
    for (const std::string& scene : arguments.scenes) {
        eExportFlags flags = arguments.flags;
        flags.scene = scene;
        exitCode = std::max(exitCode, PlanScene(flags, output));
        if (exitCode == kExitCancelled) {
            break;
        }
    }
    output.Finish();
    return exitCode;
}

}  // namespace

void AddPlanCommand(CLI::App& program, std::function<int()>& action) {
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command = *program.add_subcommand("plan", "Say what an export would write, and touch nothing");
    command
        .add_option("SCENE", arguments->scenes,
                    "Scene documents, glTF or FBX files; each is planned by itself")
        ->required();
    command.add_flag("--json", arguments->asJson, "As JSON: a list with an object per scene");
    AddRunFlags(command, arguments->flags);
    CLI::Option* const models =
        command
            .add_option("--models", arguments->modelList,
                        "Write only which models a scene has and where they go, as JSON, and "
                        "plan nothing")
            ->type_name("FILE");
    AddSourcesFlag(command, arguments->flags)->needs(models);
    command.footer(
        "A file is new, changed, same (written with the bytes that it has), kept (not written), deleted, or\n"
        "leftover (in the folder of a model, and nothing in the scene writes it any more).\n"
        "The flags are those of export; nothing is stored. Exit status: that of the export, the highest one\n"
        "of several scenes.");
    command.callback([arguments, &action] { action = [arguments] { return RunPlan(*arguments); }; });
}

}  // namespace cli
