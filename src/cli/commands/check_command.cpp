#include "cli/commands/check_command.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "answers/manifest_check.h"
#include "answers/manifest_text.h"
#include "cli/flags/language_flag.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/terminal_text.h"
#include "messages/io_reason.h"
#include "platform/file_layer.h"
#include "platform/native_path.h"
#include "platform/utf8_path.h"

namespace cli {

namespace {

struct eArguments {
    std::string manifest;
    std::string root;      // where the files lie now; empty: where the manifest says
    std::string baseName;  // the folder that its paths begin at; empty: its own
    bool onlyFiles = false;
    bool asJson = false;
};

// False, and told, for a folder that is none; an empty name is not looked at.
bool IsFolder(const char* flag, const std::string& name) {
    const bool isFolder = name.empty() || std::filesystem::is_directory(platform::PathFromUtf8(name));
    if (!isFolder) {
        TellError(ePhrase::PathNoFolder, std::string(flag) + " " + name);
    }
    return isFolder;
}

// Nothing, and told, if the manifest can't be read.
std::optional<answers::eManifest> Read(const eArguments& arguments) {
    const std::string native = platform::AbsoluteNative(arguments.manifest);
    platform::eFileContent content;
    std::optional<answers::eManifest> manifest;
    const platform::eIoStatus status = platform::ReadWhole(platform::DiskLayer(), native, content);
    eBilingual problem = status.IsOk() ? eBilingual() : ReasonWords(status);
    if (problem.IsEmpty()) {
        const std::string folder = arguments.baseName.empty() ? platform::NativeParent(native)
                                                              : platform::AbsoluteNative(arguments.baseName);
        manifest = answers::ReadManifest({reinterpret_cast<const char*>(content.data()), content.size()},
                                         folder, problem);
    }
    if (!manifest) {
        TellError(problem.At(arguments.manifest));
    } else if (!arguments.root.empty()) {
        manifest->root = platform::AbsoluteNative(arguments.root);
    }
    return manifest;
}

int RunCheck(const eArguments& arguments) {
    if (!IsFolder("--root", arguments.root) || !IsFolder("--base", arguments.baseName)) {
        return kExitUsage;
    }
    const std::optional<answers::eManifest> manifest = Read(arguments);
    if (!manifest) {
        return kExitUsage;
    }
    answers::eManifestCheck check = answers::CheckManifest(*manifest, !arguments.onlyFiles);
    check.manifest = arguments.manifest;
    constexpr int kIndent = 2;
    const auto handler = inspect::eDescription::error_handler_t::replace;
    const std::string text = arguments.asJson
                                 ? answers::DescribeCheck(check).dump(kIndent, ' ', false, handler) + "\n"
                                 : answers::CheckText(check, TerminalLanguage());
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
    return check.IsSound() ? kExitDone : kExitDiffers;
}

}  // namespace

void AddCheckCommand(CLI::App& program, std::function<int()>& action) {
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command = *program.add_subcommand("check", "Say which files of a manifest are not as it says");
    command
        .add_option("FILE", arguments->manifest, "Manifest that `zyrexport export --manifest` has written")
        ->required();
    command
        .add_option("--root", arguments->root, "Resource root that the files lie below now, if it was moved")
        ->type_name("DIR");
    command
        .add_option("--base", arguments->baseName,
                    "Folder that the manifest's paths begin at, if it was moved alone")
        ->type_name("DIR");
    command.add_flag("--files-only", arguments->onlyFiles,
                     "Leave the sources aside, where they are not at hand");
    command.add_flag("--json", arguments->asJson, "As JSON");
    AddLanguageFlag(command);
    command.footer(
        "A file is missing, changed, or stale: as it was written, but a source of it has changed since, is\n"
        "gone, or one has come that was looked for in vain. Exit status: 0 all are sound, 5 some are not,\n"
        "2 the manifest can't be read.");
    command.callback([arguments, &action] { action = [arguments] { return RunCheck(*arguments); }; });
}

}  // namespace cli
