#include "cli/flags/scene_flags.h"

namespace cli {

std::vector<CLI::Option*> AddSceneFlags(CLI::App& command, eSceneFlags& flags) {
    constexpr double kSlowest = 0.01;
    constexpr double kFastest = 10000;
    return {
        command
            .add_option("--as-model", flags.asModel,
                        "Export a scene without properties as the model of that path")
            ->type_name("PATH"),
        command.add_option("--fps", flags.fps, "Frames a second of a file that counts seconds")
            ->type_name("N")
            ->check(CLI::Range(kSlowest, kFastest)),
        command
            .add_option(
                "--texture-path", flags.texturePaths,
                "Folder where pictures are looked for that an FBX file names elsewhere; may be repeated")
            ->type_name("DIR")
            ->allow_extra_args(false),
        command
            .add_option("--properties", flags.properties,
                        "Properties of the nodes, instead of those in SCENE.properties")
            ->type_name("FILE"),
        command.add_flag("--no-split", flags.noSplit, "Keep meshes whole that the engine can't hold"),
    };
}

}  // namespace cli
