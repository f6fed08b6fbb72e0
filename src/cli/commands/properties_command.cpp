#include "cli/commands/properties_command.h"

#include <cstdio>
#include <memory>
#include <string>

#include "cli/flags/language_flag.h"
#include "cli/run/scene_file.h"
#include "cli/terminal/exit_code.h"
#include "standalone/loaders/shared/property_sidecar.h"

namespace cli {

void AddPropertiesCommand(CLI::App& program, std::function<int()>& action) {
    struct eArguments {
        std::string scene;
        eSceneFlags sceneFlags;
    };
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command = *program.add_subcommand(
        "properties", "Print the properties of a scene's nodes, to start SCENE.properties from");
    command.add_option("SCENE", arguments->scene, "Scene document, glTF or FBX file")->required();
    AddSceneFlags(command, arguments->sceneFlags);
    AddLanguageFlag(command);
    command.callback([arguments, &action] {
        action = [arguments] {
            const auto scene = ReadScene(arguments->scene, arguments->sceneFlags, false).scene;
            if (!scene) {
                return kExitUsage;
            }
            std::fputs(standalone::PropertySidecarOf(*scene).c_str(), stdout);
            return kExitDone;
        };
    });
}

}  // namespace cli
