#include "cli/commands/verify_command.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/flags/run_option_flags.h"
#include "cli/flags/tolerance_flag.h"
#include "cli/run/dry_run.h"
#include "cli/run/export_run.h"
#include "cli/run/scene_file.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/terminal_text.h"
#include "messages/io_reason.h"
#include "platform/temporary_folder.h"
#include "platform/utf8_path.h"
#include "run/export.h"
#include "standalone/standalone_host.h"
#include "verify/verification.h"

namespace cli {

namespace {

struct eArguments {
    eExportFlags flags;
    std::string root{};  // of files that are written already; empty: the scene is exported first
    verify::eTolerances tolerances{};
    std::vector<std::string> bounds{};  // KIND=NUMBER
    bool asJson = false;
};

eBounds BoundsOf(verify::eTolerances& tolerances) {
    return {&tolerances.metres, &tolerances.degrees, &tolerances.decibels};
}

void Print(const verify::eVerification& verification, const eArguments& arguments) {
    constexpr int kIndent = 2;
    const auto handler = inspect::eDescription::error_handler_t::replace;
    const std::string text = arguments.asJson
                                 ? verify::Describe(verification).dump(kIndent, ' ', false, handler) + "\n"
                                 : verify::SummaryOf(verification, TerminalLanguage());
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
}

// The files of the run, against a host that has not seen it.
std::optional<verify::eVerification> VerifyRun(const Export& run, const eArguments& arguments) {
    standalone::eLoadResult loaded =
        ReadScene(arguments.flags.scene, arguments.flags.sceneFlags, arguments.flags.quiet);
    if (!loaded.scene) {
        return std::nullopt;
    }
    standalone::StandaloneHost host(std::move(*loaded.scene));
    if (auto* const exporting = dynamic_cast<standalone::StandaloneHost*>(run.host)) {
        host.TakePictures(*exporting);
    }
    return verify::Verify({host, run.options, arguments.flags.exportSelected}, arguments.tolerances);
}

// Exports into memory, in front of an empty folder.
int VerifyNewFiles(eArguments arguments) {
    std::shared_ptr<platform::eTemporaryFolder> folder;
    if (const platform::eIoStatus made = platform::eTemporaryFolder::Make(folder); !made.IsOk()) {
        TellError(ePhrase::NoTemporaryFolder, ReasonWords(made));
        return kExitFatal;
    }
    if (!arguments.flags.silent) {
        arguments.flags.resourceRoot = folder->Path();
    }
    std::optional<verify::eVerification> verification;
    eDryRun dry;
    dry.tell = [&](const Export& run, const eRunRecord& record) {
        if (record.exitCode == kExitDone || record.exitCode == kExitErrors) {
            verification = VerifyRun(run, arguments);
        }
    };
    const int exitCode = RunWithoutWriting(arguments.flags, dry);
    if (!verification) {
        return exitCode;
    }
    Print(*verification, arguments);
    return verification->IsClean() ? exitCode : kExitDiffers;
}

int VerifyWrittenFiles(eArguments arguments, int exitCode) {
    std::optional<verify::eVerification> verification;
    eDryRun dry;
    dry.endsAtOptions = true;
    dry.tell = [&](const Export& run, const eRunRecord& record) {
        if (record.exitCode != kExitUsage) {
            verification = verify::Verify({*run.host, run.options, arguments.flags.exportSelected},
                                          arguments.tolerances);
        }
    };
    const int optionsExit = RunWithoutWriting(arguments.flags, dry);
    if (!verification) {
        return optionsExit;
    }
    Print(*verification, arguments);
    return verification->IsClean() ? exitCode : kExitDiffers;
}

int RunVerify(eArguments arguments) {
    if (!TakeBounds(arguments.bounds, BoundsOf(arguments.tolerances))) {
        return kExitUsage;
    }
    if (arguments.root.empty()) {
        return VerifyNewFiles(std::move(arguments));
    }
    if (!std::filesystem::is_directory(platform::PathFromUtf8(arguments.root))) {
        TellError(ePhrase::PathNoFolder, "--root " + arguments.root);
        return kExitUsage;
    }
    arguments.flags.resourceRoot = arguments.root;
    return VerifyWrittenFiles(std::move(arguments), kExitDone);
}

}  // namespace

int VerifyAfterExport(const eExportFlags& flags, int exitCode) {
    eArguments arguments{.flags = flags};
    arguments.flags.quiet = true;
    return VerifyWrittenFiles(std::move(arguments), exitCode);
}

void AddVerifyCommand(CLI::App& program, std::function<int()>& action) {
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command = *program.add_subcommand("verify", "Prove that written files are the scene");
    command.add_option("SCENE", arguments->flags.scene, "Scene document, glTF or FBX file")->required();
    CLI::Option* const root =
        command
            .add_option("--root", arguments->root,
                        "Resource root with files that are written already; else the scene is exported first")
            ->type_name("DIR");
    AddToleranceFlag(command, arguments->bounds, BoundsOf(arguments->tolerances));
    command.add_flag("--json", arguments->asJson, "As JSON");
    CLI::Option* const silent = AddRunFlags(command, arguments->flags);
    root->excludes(silent);
    root->excludes("--resource-root");
    command.footer(
        "The files are read as the engine reads them and compared with the scene; the code that writes them\n"
        "has no part in it. Nothing is written. Exit status: that of the export, or 5 where a file lies "
        "beyond\n"
        "the tolerances.");
    command.callback([arguments, &action] {
        arguments->flags.quiet = true;
        action = [arguments] { return RunVerify(*arguments); };
    });
}

}  // namespace cli
