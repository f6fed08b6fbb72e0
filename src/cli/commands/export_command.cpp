#include "cli/commands/export_command.h"

#include <memory>

#include "cli/commands/verify_command.h"
#include "cli/flags/export_flags.h"
#include "cli/flags/run_option_flags.h"
#include "cli/run/export_run.h"
#include "cli/terminal/exit_code.h"
#include "standalone/pictures/picture_problem.h"

namespace cli {

void AddExportCommand(CLI::App& program, std::function<int()>& action) {
    const auto flags = std::make_shared<eExportFlags>();
    CLI::App& command = *program.add_subcommand("export", "Export a scene to the resource tree");
    command.add_option("SCENE", flags->scene, "Scene document, glTF or FBX file")->required();
    CLI::Option* const silent = AddRunFlags(command, *flags);
    silent->excludes(command.add_flag(
        "--verbose", flags->verbose, "Tell every file, and what the order of its triangles saves each mesh"));
    command.add_option("--plugin", flags->plugin, "Let a plug-in module export, as a modelling host does")
        ->type_name("FILE")
        ->excludes("--static-frame");  // never stored, so the module can't be told
    command.add_option("--report", flags->report, "Write what the run did as JSON")->type_name("FILE");
    command
        .add_option("--depfile", flags->depfile,
                    "Write what the run has read and written as a rule of make, for a build")
        ->type_name("FILE");
    AddSourcesFlag(command, *flags);
    command
        .add_option("--manifest", flags->manifest,
                    "Write what the files hold and come from as JSON, for `zyrexport check`")
        ->type_name("FILE")
        ->excludes("--plugin");  // which tells nothing of its work
    command.add_flag("--keep-options", flags->keepOptions, "Leave the stored options as they are")
        ->excludes("--plugin")     // which stores them itself
        ->excludes("--no-fence");  // the fence holds them
    const auto verifies = std::make_shared<bool>(false);
    silent->excludes(command.add_flag("--verify", *verifies,
                                      "Compare what is written with the scene, as `zyrexport verify`"));
    command.footer("Pictures of the scene: " + std::string(standalone::kPictureFormats) +
                   ".\n"
                   "Options but --static-frame are stored, and the next call starts from them, unless\n"
                   "--keep-options is given.\n"
                   "Exit status: 0 done, 1 fatal error, 2 wrong usage or unreadable scene,\n"
                   "3 done with errors, 5 written otherwise than the scene, 130 cancelled.");
    command.callback([flags, verifies, &action] {
        action = [flags, verifies] {
            const int exitCode = RunExport(*flags);
            const bool isComplete = exitCode == kExitDone || exitCode == kExitErrors;
            return *verifies && isComplete ? VerifyAfterExport(*flags, exitCode) : exitCode;
        };
    });
}

}  // namespace cli
