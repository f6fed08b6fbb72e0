#include "cli/program.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

#include "cli/completion_command.h"
#include "cli/convert_command.h"
#include "cli/exit_code.h"
#include "cli/export_command.h"
#include "cli/help_format.h"
#include "cli/inspect_command.h"
#include "cli/known_names.h"
#include "cli/lint_command.h"
#include "cli/messages_command.h"
#include "cli/options_command.h"
#include "cli/pak_command.h"
#include "cli/plan_command.h"
#include "cli/properties_command.h"
#include "cli/why_command.h"

namespace cli {

int RunProgram(std::vector<std::string> arguments) {
    CLI::App program("Exports 3D scenes to the game's resource tree.", "zyrexport");
    program.set_version_flag("--version", "zyrexport " ZYREXPORT_VERSION);
    program.require_subcommand(1);
    // A word that begins with a slash is a path.
    program.allow_windows_style_options(false);
    program.formatter(std::make_shared<eHelpFormat>());
    std::function<int()> action;
    AddExportCommand(program, action);
    AddPlanCommand(program, action);
    AddWhyCommand(program, action);
    AddConvertCommand(program, action);
    AddInspectCommand(program, action);
    AddPakCommand(program, action);
    AddOptionsCommand(program, action);
    AddPropertiesCommand(program, action);
    AddCompletionCommand(program, action);
    AddLintCommand(program, action);
    AddMessagesCommand(program, action);
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
