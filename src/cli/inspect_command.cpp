#include "cli/inspect_command.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/exit_code.h"
#include "cli/terminal_text.h"
#include "inspect/inspect.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

// The files that the export writes; what else lies in a resource folder is passed over.
bool IsOurs(const fs::path& path) {
    const std::string name = path.filename().string();
    const std::string extension = name.starts_with(".") ? name : path.extension().string();
    const char* const kKinds[] = {".mdl", ".def", ".mesh", ".material", ".anm", ".dds", ".bmp"};
    return std::ranges::find(kKinds, extension) != std::end(kKinds);
}

// The paths with folders replaced by the files below them, sorted. False if a path does not exist.
bool CollectFiles(const std::vector<std::string>& paths, std::vector<fs::path>& files) {
    for (const std::string& path : paths) {
        std::error_code error;
        if (!fs::exists(path, error)) {
            TellError(path + ": there is no such file or folder");
            return false;
        }
        if (!fs::is_directory(path, error)) {
            files.emplace_back(path);
            continue;
        }
        std::vector<fs::path> below;
        for (const auto& entry : fs::recursive_directory_iterator(path, error)) {
            if (entry.is_regular_file(error) && IsOurs(entry.path())) {
                below.push_back(entry.path());
            }
        }
        std::ranges::sort(below);
        files.insert(files.end(), below.begin(), below.end());
    }
    return true;
}

std::optional<std::vector<std::uint8_t>> ReadContent(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<std::uint8_t> content((std::istreambuf_iterator<char>(file)),
                                      std::istreambuf_iterator<char>());
    return file.bad() || !file.is_open() ? std::nullopt : std::optional(std::move(content));
}

int RunInspect(const std::vector<std::string>& paths, bool asJson) {
    std::vector<fs::path> files;
    if (!CollectFiles(paths, files)) {
        return kExitUsage;
    }
    inspect::eDescription all = inspect::eDescription::array();
    int exitCode = kExitDone;
    for (const fs::path& path : files) {
        const auto content = ReadContent(path);
        inspect::eInspection result;
        if (content) {
            result = inspect::InspectContent(path.filename().string(), *content);
        } else {
            result.problem = "the file can't be read";
        }
        if (!result.problem.empty()) {
            TellError(path.string() + ": " + result.problem);
            exitCode = kExitUsage;
            continue;
        }
        if (asJson) {
            inspect::eDescription entry{{"path", path.string()}};
            entry.update(result.description);
            all.push_back(std::move(entry));
        } else {
            std::printf("%s\n%s\n", path.string().c_str(), inspect::RenderText(result.description).c_str());
        }
    }
    if (asJson) {
        constexpr int kIndent = 2;
        std::printf("%s\n",
                    all.dump(kIndent, ' ', false, inspect::eDescription::error_handler_t::replace).c_str());
    }
    return exitCode;
}

}  // namespace

void AddInspectCommand(CLI::App& program, std::function<int()>& action) {
    struct eArguments {
        std::vector<std::string> paths;
        bool asJson = false;
    };
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command = *program.add_subcommand("inspect", "Say what is in written files");
    command.add_option("PATH", arguments->paths, "Files, or folders of the resource tree")->required();
    command.add_flag("--json", arguments->asJson, "As JSON: a list with an object per file");
    command.callback([arguments, &action] {
        action = [arguments] { return RunInspect(arguments->paths, arguments->asJson); };
    });
}

}  // namespace cli
