#include "cli/run/inspect_source.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "base/ansi.h"
#include "base/failure_report.h"
#include "cli/flags/option_path.h"
#include "io/name.h"
#include "io/repository/repository.h"
#include "messages/utf8_words.h"
#include "platform/utf8_path.h"

namespace cli {

namespace {

namespace fs = std::filesystem;
namespace xRepository = xIo::xRepository;

constexpr std::string_view kContainerEnding = ".pak";

bool IsContainer(const std::string& path) {
    return EqualNoAsciiCase(platform::PathFromUtf8(path).extension().string(), kContainerEnding);
}

// What the export writes; what else lies in a resource folder is passed over.
bool IsOurs(const eName& name) {
    const std::string extension = name.Part(eName::Extension);
    const char* const kKinds[] = {".mdl", ".def", ".mesh", ".material", ".anm", ".dds", ".bmp"};
    return std::ranges::find(kKinds, extension) != std::end(kKinds);
}

// Whether a name is asked for: all of the tree, a folder of it that ends in a slash, or the one name.
bool IsAskedFor(const std::string& name, const std::string& asked) {
    return asked.empty() || (asked.ends_with('/') ? name.starts_with(asked) : name == asked);
}

eInspectedFile ReadResource(const std::string& name) {
    eInspectedFile file{ToUtf8(name), name, {}, {}};
    const std::string report = ToUtf8(FailureReport([&] {
        const auto stream = xRepository::OpenResource(name);
        file.content.resize(static_cast<std::size_t>(stream->Size()));
        stream->Read(file.content.data(), stream->Size());
    }));
    file.problem = {report, report};
    return file;
}

void ReadTree(const eContainerPath& typed, eReadFiles files,
              const std::function<void(const eInspectedFile&)>& visit) {
    const std::optional<std::string> path = FolderOption(typed.path);
    const std::optional<std::string> asked = OptionPath(typed.name);
    if (!path || !asked) {
        visit({typed.path, {}, {}, Utf8Words(ePhrase::PathForeign)});
        return;
    }
    const bool isContainer = IsContainer(typed.path);
    const std::string problem =
        ToUtf8(FailureReport([&] { xRepository::Mount(isContainer ? "/mounted.pak" : "/", *path); }));
    if (!problem.empty()) {
        visit({typed.path, {}, {}, {problem, problem}});
        return;
    }
    const std::string resolved = eName(*asked);
    bool isFound = resolved.empty();
    for (const std::string& name : xRepository::Names()) {
        const bool isOneName = !resolved.empty() && !resolved.ends_with('/');
        if (IsAskedFor(name, resolved) && (isOneName || files == eReadFiles::All || IsOurs(name))) {
            isFound = true;
            visit(ReadResource(name));
        }
    }
    if (!isFound) {
        visit({typed.path + ":" + typed.name, {}, {}, Utf8Words(ePhrase::PathNotInContainer)});
    }
}

void ReadLooseFile(const std::string& typed, const std::function<void(const eInspectedFile&)>& visit) {
    const fs::path path = platform::PathFromUtf8(typed);
    eInspectedFile file{typed, FromUtf8(platform::Utf8FromPath(path.filename())).text, {}, {}};
    std::ifstream stream(path, std::ios::binary);
    file.content.assign(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    if (stream.bad() || !stream.is_open()) {
        file.problem = Utf8Words(ePhrase::PathNotRead);
    }
    xRepository::Settings().mountOnDemand = true;
    xRepository::Settings().basePath =
        FolderOption(platform::Utf8FromPath(fs::absolute(path).parent_path())).value_or("");
    visit(file);
}

}  // namespace

eContainerPath SplitContainer(const std::string& typed) {
    const std::size_t colon = typed.rfind(":/");
    if (colon != std::string::npos && IsContainer(typed.substr(0, colon))) {
        return {typed.substr(0, colon), typed.substr(colon + 1)};
    }
    return {typed, {}};
}

bool IsTree(const std::string& typed) {
    const eContainerPath split = SplitContainer(typed);
    std::error_code error;
    return IsContainer(split.path) ? split.name.empty() || split.name.ends_with('/')
                                   : fs::is_directory(platform::PathFromUtf8(split.path), error);
}

void ReadInspected(const std::string& typed, const std::function<void(const eInspectedFile&)>& visit,
                   eReadFiles files) {
    const eContainerPath split = SplitContainer(typed);
    std::error_code error;
    if (fs::is_directory(platform::PathFromUtf8(split.path), error) || IsContainer(split.path)) {
        ReadTree(split, files, visit);
    } else {
        ReadLooseFile(typed, visit);
    }
    xRepository::Clear();
    xRepository::Settings() = {};
}

}  // namespace cli
