#include "cli/commands/pak_command.h"

#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "base/ansi.h"
#include "cli/flags/option_path.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/terminal_text.h"
#include "io/repository/pak_writer.h"
#include "platform/utf8_path.h"

namespace cli {

namespace {

int RunPak(const std::string& folder, const std::string& target) {
    const std::optional<std::string> source = FolderOption(folder);
    std::error_code error;
    if (!source || !std::filesystem::is_directory(platform::PathFromUtf8(folder), error)) {
        TellError(folder + ": there is no such folder, or its name can't be used");
        return kExitUsage;
    }
    const xIo::ePackedFolder packed = xIo::WritePak(
        *source, platform::Utf8FromPath(std::filesystem::absolute(platform::PathFromUtf8(target))));
    if (!packed.problem.empty()) {
        TellError(ToUtf8(packed.problem));
        return kExitErrors;
    }
    std::printf("%d files, %" PRId64 " bytes -> %" PRId64 " bytes\n", packed.files, packed.bytes,
                packed.packedBytes);
    return kExitDone;
}

}  // namespace

void AddPakCommand(CLI::App& program, std::function<int()>& action) {
    struct eArguments {
        std::string folder;
        std::string target;
    };
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command = *program.add_subcommand("pak", "Pack a resource folder");
    command.add_option("FOLDER", arguments->folder, "The folder; names in the container begin below it")
        ->required();
    command.add_option("OUT", arguments->target, "The container to write, NAME.pak")->required();
    command.callback([arguments, &action] {
        action = [arguments] { return RunPak(arguments->folder, arguments->target); };
    });
}

}  // namespace cli
