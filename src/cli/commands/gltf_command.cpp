#include "cli/commands/gltf_command.h"

#include <memory>
#include <string>

#include "cli/run/written_glb.h"
#include "cli/terminal/exit_code.h"

namespace cli {

namespace {

struct eArguments {
    eWrittenModelFlags flags{};
    std::string target{};
    bool isBare = false;
};

int RunGltf(eArguments arguments) {
    arguments.flags.options.hasMarks = !arguments.isBare;
    const gltf::eGlbFile glb = ReadWrittenGlb(arguments.flags);
    return glb.content.empty() ? kExitUsage : FinishWrittenModel(glb, arguments.target, glb.content);
}

}  // namespace

void AddGltfCommand(CLI::App& program, std::function<int()>& action) {
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command = *program.add_subcommand("gltf", "Turn the written files of a model into a .glb");
    AddWrittenModelFlags(command, arguments->flags);
    command.add_option("OUT", arguments->target, "The glTF file to write, NAME.glb")->required();
    command.add_flag("--bare", arguments->isBare, "Without volumes, zones, support points and previews");
    command.footer(
        "The files are read as the engine reads them. Exit status: 0, 1 where OUT can't be written, 2 where\n"
        "there is no model or one of its files is broken.");
    command.callback([arguments, &action] { action = [arguments] { return RunGltf(*arguments); }; });
}

}  // namespace cli
