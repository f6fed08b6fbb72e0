#include "cli/commands/inspect_command.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "cli/flags/language_flag.h"
#include "cli/run/inspect_source.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/native_file.h"
#include "cli/terminal/terminal_text.h"
#include "inspect/inspect.h"
#include "inspect/png_file.h"
#include "platform/utf8_path.h"

namespace cli {

namespace {

// The version of the descriptions' keys; rises when one is taken out or changes its meaning.
constexpr int kDescriptionSchema = 1;

// Prints the descriptions, for people at once, as JSON at the end.
class eInspectOutput {
public:
    explicit eInspectOutput(bool json) : asJson(json) {}

    void Add(const eInspectedFile& file) {
        inspect::eInspection result;
        result.problem = file.problem;
        if (result.problem.IsEmpty()) {
            result = inspect::InspectContent(file.name, file.content);
        }
        if (!result.problem.IsEmpty()) {
            TellError(result.problem.At(file.path));
            exitCode = kExitUsage;
        } else if (asJson) {
            inspect::eDescription entry{{"schema", kDescriptionSchema}, {"path", file.path}};
            entry.update(result.description);
            all.push_back(std::move(entry));
        } else {
            std::printf("%s\n%s\n", file.path.c_str(), inspect::RenderText(result.description).c_str());
        }
    }

    int Finish() const {
        if (asJson) {
            constexpr int kIndent = 2;
            std::printf(
                "%s\n",
                all.dump(kIndent, ' ', false, inspect::eDescription::error_handler_t::replace).c_str());
        }
        return exitCode;
    }

private:
    bool asJson;
    inspect::eDescription all = inspect::eDescription::array();
    int exitCode = kExitDone;
};

// The one file of a path; a problem if it holds another number of them.
eInspectedFile OnlyFile(const std::string& path) {
    eInspectedFile only;
    int count = 0;
    ReadInspected(path, [&](const eInspectedFile& file) {
        if (++count == 1) {
            only = file;
        }
    });
    if (count != 1) {
        only.problem = Utf8Words(ePhrase::UsageOnePicture, count);
    }
    return only;
}

int WritePng(const std::string& path, const std::string& target) {
    const eInspectedFile file = OnlyFile(path);
    eBilingual problem = file.problem;
    std::string png;
    if (problem.IsEmpty()) {
        png = inspect::PictureAsPng(file.content, problem);
    }
    if (!problem.IsEmpty()) {
        TellError(problem.At(path));
        return kExitUsage;
    }
    problem = WriteNativeFile(target, png);
    if (!problem.IsEmpty()) {
        TellError(problem.At(target));
        return kExitFatal;
    }
    return kExitDone;
}

int RunInspect(const std::vector<std::string>& paths, bool asJson, const std::string& png) {
    for (const std::string& path : paths) {
        std::error_code error;
        if (!std::filesystem::exists(platform::PathFromUtf8(SplitContainer(path).path), error)) {
            TellError(ePhrase::PathNothing, path);
            return kExitUsage;
        }
    }
    if (!png.empty()) {
        if (const int exitCode = WritePng(paths.front(), png); exitCode != kExitDone) {
            return exitCode;
        }
    }
    eInspectOutput output(asJson);
    for (const std::string& path : paths) {
        ReadInspected(path, [&](const eInspectedFile& file) { output.Add(file); });
    }
    return output.Finish();
}

}  // namespace

void AddInspectCommand(CLI::App& program, std::function<int()>& action) {
    struct eArguments {
        std::vector<std::string> paths;
        bool asJson = false;
        std::string png;
    };
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command = *program.add_subcommand("inspect", "Say what is in written files");
    command
        .add_option("PATH", arguments->paths,
                    "Files, folders of the resource tree, containers (game.pak), or what is in one "
                    "(game.pak:/units/tank/tank.mdl, game.pak:/units/)")
        ->required();
    command.add_flag("--json", arguments->asJson, "As JSON: a list with an object per file");
    command.add_option("--png", arguments->png,
                       "Write the picture of one .dds (its first level) or .bmp file here");
    AddLanguageFlag(command);
    command.callback([arguments, &action] {
        if (!arguments->png.empty() && arguments->paths.size() != 1) {
            throw CLI::ValidationError("--png", "takes one texture file");
        }
        action = [arguments] { return RunInspect(arguments->paths, arguments->asJson, arguments->png); };
    });
}

}  // namespace cli
