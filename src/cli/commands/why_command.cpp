#include "cli/commands/why_command.h"

#include <cstdio>
#include <memory>
#include <string>

#include "answers/find_node.h"
#include "answers/why.h"
#include "base/ansi.h"
#include "cli/flags/run_option_flags.h"
#include "cli/run/dry_run.h"
#include "cli/run/export_run.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/terminal_text.h"
#include "run/export.h"

namespace cli {

namespace {

struct eArguments {
    eExportFlags flags;
    std::string node;
    bool asJson = false;
};

std::string JsonText(const eRunJournal& journal, const host::INode& node) {
    inspect::eDescription answer{{"schema", answers::kWhySchema}};
    answer.update(answers::DescribeNode(journal, node, eLanguage::English));
    constexpr int kIndent = 2;
    return answer.dump(kIndent, ' ', false, inspect::eDescription::error_handler_t::replace) + "\n";
}

int Answer(const Export& run, const eRunJournal& journal, const eArguments& arguments) {
    const answers::eFoundNode found =
        answers::FindNode(*run.host->GetRootNode(), FromUtf8(arguments.node).text);
    if (found.node == nullptr) {
        TellError(found.problem);
        return kExitUsage;
    }
    const std::string text = arguments.asJson ? JsonText(journal, *found.node)
                                              : answers::NodeText(journal, *found.node, TerminalLanguage());
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
    return kExitDone;
}

// An answer is an answer, whatever the run has told; only without one its own exit status counts. A run that
// its options keep from beginning has decided nothing.
int RunWhy(const eArguments& arguments) {
    eDryRun dry;
    dry.needsNoRoot = true;
    std::optional<int> answered;
    dry.tell = [&](const Export& run, const eRunRecord& record) {
        if (record.exitCode != kExitUsage) {
            answered = Answer(run, dry.journal, arguments);
        }
    };
    const int exitCode = RunWithoutWriting(arguments.flags, dry);
    return answered.value_or(exitCode);
}

}  // namespace

void AddWhyCommand(CLI::App& program, std::function<int()>& action) {
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command =
        *program.add_subcommand("why", "Say what an export makes of a node, and by which rule");
    command.add_option("SCENE", arguments->flags.scene, "Scene document, glTF or FBX file")->required();
    command
        .add_option("NODE", arguments->node, "Name of the node, or its path from the top: tank/hull/turret")
        ->required();
    command.add_flag("--json", arguments->asJson, "As JSON");
    AddRunFlags(command, arguments->flags);
    command.footer(
        "Nothing is written. Of several nodes of one path NODE#2 means the second. Errors of the run come "
        "on\n"
        "standard error. Exit status: 0 answered, 1 fatal error, 2 wrong usage, unreadable scene, or no "
        "such\n"
        "node.");
    command.callback([arguments, &action] {
        arguments->flags.quiet = true;
        action = [arguments] { return RunWhy(*arguments); };
    });
}

}  // namespace cli
