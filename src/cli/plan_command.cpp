#include "cli/plan_command.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "answers/plan.h"
#include "cli/dry_run.h"
#include "cli/exit_code.h"
#include "cli/export_run.h"
#include "cli/run_option_flags.h"
#include "platform/drive_table.h"
#include "platform/native_path.h"
#include "platform/utf8_path.h"

namespace cli {

namespace {

struct eArguments {
    std::vector<std::string> scenes;
    eExportFlags flags;  // of each scene
    bool asJson = false;
};

// Prints the plans, for people at once, as JSON at the end.
class ePlanOutput {
public:
    explicit ePlanOutput(bool json) : asJson(json) {}

    void Add(const answers::eRunPlan& plan) {
        if (asJson) {
            all.push_back(answers::DescribePlan(plan));
        } else {
            std::printf("%s%s", isFirst ? "" : "\n", answers::PlanText(plan).c_str());
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

int RunPlan(const eArguments& arguments) {
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
    command.footer(
        "A file is new, changed, same (written with the bytes that it has), kept (not written), deleted, or\n"
        "leftover (in the folder of a model, and nothing in the scene writes it any more).\n"
        "The flags are those of export; nothing is stored. Exit status: that of the export, the highest one\n"
        "of several scenes.");
    command.callback([arguments, &action] { action = [arguments] { return RunPlan(*arguments); }; });
}

}  // namespace cli
