#include "cli/flags/run_option_flags.h"

#include <cstdint>
#include <string>
#include <vector>

#include "cli/flags/language_flag.h"

namespace cli {

namespace {

// A pair of flags that set and clear an option; without either it keeps its stored value.
CLI::Option* AddSwitch(CLI::App& command, const std::string& name, std::optional<bool>& value,
                       const char* what) {
    return command.add_flag_function(
        "--" + name + ",!--no-" + name, [&value](std::int64_t count) { value = count > 0; }, what);
}

std::vector<CLI::Option*> AddOptionFlags(CLI::App& command, eExportFlags& flags) {
    return {
        command.add_option("--resource-root", flags.resourceRoot, "Root of the game's resource tree")
            ->type_name("DIR"),
        command
            .add_option("--common-source", flags.commonSource,
                        "Where common textures lie in the artists' tree")
            ->type_name("DIR"),
        command.add_option("--common-target", flags.commonTarget, "Game path of common textures")
            ->type_name("PATH"),
        AddSwitch(command, "mesh", flags.mesh, "Write skeleton, definition, meshes, materials and textures"),
        AddSwitch(command, "animation", flags.animation, "Write animations"),
        AddSwitch(command, "geometry", flags.geometry, "Export geometry"),
        AddSwitch(command, "ik", flags.ik, "Write the limits of joints"),
        AddSwitch(command, "lights-cameras", flags.lightsCameras, "Let the scene's lights count"),
        command.add_option("--static-frame", flags.staticFrame, "Frame at which the scene is read")
            ->type_name("N"),
        AddSwitch(command, "animate-selected", flags.animateSelected, "Animations of selected nodes only"),
        AddSwitch(command, "animate-current-range", flags.animateCurrentRange,
                  "Animations inside the scene's frame range only"),
        AddSwitch(command, "animate-reverse", flags.animateReverse, "Sample animations backwards"),
        command.add_flag("--export-selected", flags.exportSelected,
                         "Export the meshes of selected nodes only"),
        command.add_flag("--no-fence", flags.noFence, "Let the scene's names write beyond the resource root"),
    };
}

}  // namespace

CLI::Option* AddRunFlags(CLI::App& command, eExportFlags& flags) {
    std::vector<CLI::Option*> optionFlags = AddOptionFlags(command, flags);
    const std::vector<CLI::Option*> sceneFlags = AddSceneFlags(command, flags.sceneFlags);
    optionFlags.insert(optionFlags.end(), sceneFlags.begin(), sceneFlags.end());
    for (CLI::Option* option : optionFlags) {
        // A list of scenes says something for all and something else for one.
        if (option->get_multi_option_policy() == CLI::MultiOptionPolicy::Throw) {
            option->take_last();
        }
    }
    CLI::Option* silent = command.add_flag("--silent", flags.silent, "Use the fixed silent options");
    for (CLI::Option* option : optionFlags) {
        silent->excludes(option);
    }
    command.add_option("--config", flags.config, "Folder of the options file")->type_name("DIR");
    command.add_option("--drive", flags.drives, "Paths that begin with X:/ lie under DIR; may be repeated")
        ->type_name("X=DIR");
    command
        .add_option("--lock-wait", flags.longestWait,
                    "Seconds that a run waits for a model's folder which another one is writing")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    command.add_flag("--quiet", flags.quiet, "Tell errors only");
    AddLanguageFlag(command);
    return silent;
}

CLI::Option* AddSourcesFlag(CLI::App& command, eExportFlags& flags) {
    return command
        .add_option("--sources", flags.sources, "Write what the run has read and looked for, a path a line")
        ->type_name("FILE");
}

}  // namespace cli
