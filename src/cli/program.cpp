#include "cli/program.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

#include "cli/commands/batch_command.h"
#include "cli/commands/check_command.h"
#include "cli/commands/completion_command.h"
#include "cli/commands/convert_command.h"
#include "cli/commands/diff_command.h"
#include "cli/commands/export_command.h"
#include "cli/commands/gltf_command.h"
#include "cli/commands/inspect_command.h"
#include "cli/commands/lint_command.h"
#include "cli/commands/messages_command.h"
#include "cli/commands/options_command.h"
#include "cli/commands/pak_command.h"
#include "cli/commands/plan_command.h"
#include "cli/commands/preview_command.h"
#include "cli/commands/properties_command.h"
#include "cli/commands/verify_command.h"
#include "cli/commands/why_command.h"
#include "cli/flags/language_flag.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/help_format.h"
#include "cli/terminal/known_names.h"
#include "cli/terminal/malformed_name.h"
#include "cli/terminal/terminal_text.h"
#include "cli/terminal/usage_error.h"
#include "cli/terminal/version.h"
#include "platform/utf8_path.h"

namespace cli {

namespace {

using eAction = std::function<int()>;

struct eCommand {
    std::string_view name;
    void (*add)(CLI::App& program, eAction& action);
    bool asksOthers = false;  // works on the flags of all commands
};

// In the order of the help.
constexpr eCommand kCommands[] = {
    {"export", AddExportCommand},
    {"batch", AddBatchCommand},
    {"plan", AddPlanCommand},
    {"why", AddWhyCommand},
    {"verify", AddVerifyCommand},
    {"diff", AddDiffCommand},
    {"check", AddCheckCommand},
    {"convert", AddConvertCommand},
    {"inspect", AddInspectCommand},
    {"gltf", AddGltfCommand},
    {"preview", AddPreviewCommand},
    {"pak", AddPakCommand},
    {"options", AddOptionsCommand},
    {"properties", AddPropertiesCommand},
    {"completion", AddCompletionCommand, true},
    {"lint", AddLintCommand},
    {"messages", AddMessagesCommand},
};

// The command that the call names, or all where it names none: to set up the flags of all takes longer than
// a small export.
void AddCommands(CLI::App& program, eAction& action, const std::vector<std::string>& arguments) {
    const auto* const named = arguments.empty()
                                  ? std::end(kCommands)
                                  : std::ranges::find(kCommands, arguments.front(), &eCommand::name);
    const bool areAllWanted = named == std::end(kCommands) || named->asksOthers;
    for (const eCommand& command : kCommands) {
        if (areAllWanted || named->name == command.name) {
            command.add(program, action);
        }
    }
}

// False, and told, where the program could only guess at the names.
bool AreNamesReadable(const std::vector<std::string>& arguments) {
    std::vector<std::string> names = arguments;
    std::error_code error;
    names.push_back(platform::Utf8FromPath(std::filesystem::current_path(error)));
    for (const std::string& name : names) {
        if (const eBilingual problem = MalformedNameProblem(name); !problem.IsEmpty()) {
            TellError(problem);
            return false;
        }
    }
    return true;
}

}  // namespace

int RunProgram(std::vector<std::string> arguments) {
    UseLanguage(LanguageOf(arguments));
    if (!AreNamesReadable(arguments)) {
        return kExitUsage;
    }
    CLI::App program("Exports 3D scenes to the game's resource tree.", "zyrexport");
    program.set_version_flag("--version", VersionText);
    program.require_subcommand(1);
    // A word that begins with a slash is a path.
    program.allow_windows_style_options(false);
    program.formatter(std::make_shared<eHelpFormat>());
    program.failure_message(UsageErrorText);
    eAction action;
    AddCommands(program, action, arguments);
    // The parser takes them from the back.
    std::ranges::reverse(arguments);
    try {
        program.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        if (program.exit(error) == 0) {
            return kExitDone;
        }
        TellNearestNames(program);
        return kExitUsage;
    }
    return action();
}

}  // namespace cli
