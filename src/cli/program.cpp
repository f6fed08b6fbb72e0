#include "cli/program.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

#include "cli/batch_command.h"
#include "cli/check_command.h"
#include "cli/completion_command.h"
#include "cli/convert_command.h"
#include "cli/diff_command.h"
#include "cli/exit_code.h"
#include "cli/export_command.h"
#include "cli/gltf_command.h"
#include "cli/help_format.h"
#include "cli/inspect_command.h"
#include "cli/known_names.h"
#include "cli/lint_command.h"
#include "cli/malformed_name.h"
#include "cli/messages_command.h"
#include "cli/options_command.h"
#include "cli/pak_command.h"
#include "cli/plan_command.h"
#include "cli/preview_command.h"
#include "cli/properties_command.h"
#include "cli/terminal_text.h"
#include "cli/verify_command.h"
#include "cli/version.h"
#include "cli/why_command.h"
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
        if (const std::string problem = MalformedNameProblem(name); !problem.empty()) {
            TellError(problem);
            return false;
        }
    }
    return true;
}

}  // namespace

int RunProgram(std::vector<std::string> arguments) {
    if (!AreNamesReadable(arguments)) {
        return kExitUsage;
    }
    CLI::App program("Exports 3D scenes to the game's resource tree.", "zyrexport");
    program.set_version_flag("--version", VersionText);
    program.require_subcommand(1);
    // A word that begins with a slash is a path.
    program.allow_windows_style_options(false);
    program.formatter(std::make_shared<eHelpFormat>());
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
