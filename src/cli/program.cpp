#include "cli/program.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>

#include "cli/convert_command.h"
#include "cli/exit_code.h"
#include "cli/export_command.h"
#include "cli/help_format.h"
#include "cli/inspect_command.h"
#include "cli/options_command.h"
#include "cli/pak_command.h"

namespace cli {

int RunProgram(int argc, char** argv) {
    CLI::App program("Exports 3D scenes to the game's resource tree.", "zyrexport");
    program.set_version_flag("--version", "zyrexport " ZYREXPORT_VERSION);
    program.require_subcommand(1);
    program.formatter(std::make_shared<eHelpFormat>());
    std::function<int()> action;
    AddExportCommand(program, action);
    AddConvertCommand(program, action);
    AddInspectCommand(program, action);
    AddPakCommand(program, action);
    AddOptionsCommand(program, action);
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return program.exit(error) == 0 ? kExitDone : kExitUsage;
    }
    return action();
}

}  // namespace cli
