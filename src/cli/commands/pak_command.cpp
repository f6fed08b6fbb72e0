#include "cli/commands/pak_command.h"

#include <filesystem>
#include <memory>
#include <string>

#include "cli/flags/language_flag.h"
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
        TellError(ePhrase::PathNoFolderOrUnusable, folder);
        return kExitUsage;
    }
    const xIo::ePackedFolder packed = xIo::WritePak(
        *source, platform::Utf8FromPath(std::filesystem::absolute(platform::PathFromUtf8(target))));
    if (!packed.problem.IsEmpty()) {
        TellError(packed.problem);
        return kExitErrors;
    }
    Print(Utf8Words(ePhrase::PackedFiles, packed.files, packed.bytes, packed.packedBytes));
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
    AddLanguageFlag(command);
    command.callback([arguments, &action] {
        action = [arguments] { return RunPak(arguments->folder, arguments->target); };
    });
}

}  // namespace cli
