#include "cli/commands/diff_command.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "base/ansi.h"
#include "base/sha256.h"
#include "cli/flags/language_flag.h"
#include "cli/flags/tolerance_flag.h"
#include "cli/run/inspect_source.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/terminal_text.h"
#include "diff/compare_files.h"
#include "diff/difference.h"
#include "platform/utf8_path.h"

namespace cli {

namespace {

struct eArguments {
    std::string before;
    std::string after;
    std::string label;  // of two loose files; empty: the name of the new one
    diff::eTolerances tolerances{};
    std::vector<std::string> bounds{};
    bool asJson = false;
};

using eVisit = std::function<void(const std::string& name, const eInspectedFile& file)>;

// The name of a file in what was asked for: a folder inside a container has names of its own.
std::string NameBelow(const std::string& typed, const eInspectedFile& file) {
    const std::string asked = SplitContainer(typed).name;
    const bool isInside = asked.ends_with('/') && file.name.starts_with(asked);
    const std::string name = isInside ? file.name.substr(asked.size()) : file.name;
    return name.substr(std::min(name.find_first_not_of('/'), name.size()));
}

// Two paths of the same kind, read as often as it takes: trees may be larger than memory, so that only what
// differs is kept.
class eDiffRun {
public:
    explicit eDiffRun(const eArguments& arguments) : arguments_(arguments) {
        difference_.before = arguments.before;
        difference_.after = arguments.after;
        difference_.tolerances = arguments.tolerances;
    }

    int Run() {
        if (!AreThere() || !AreOfOneKind()) {
            return kExitUsage;
        }
        const eDigests old = DigestsOf(arguments_.before);
        const eDigests now = DigestsOf(arguments_.after);
        TellWhatOneSideLacks(old, now);
        CompareOthers(old, now);
        std::ranges::sort(difference_.files, {}, &diff::eFileDifference::path);
        if (!isTree_ && !difference_.files.empty()) {
            difference_.files.front().path = Label();
        }
        Print();
        return hasProblem_ ? kExitUsage : difference_.IsSame() ? kExitDone : kExitUnlike;
    }

private:
    using eDigests = std::map<std::string, std::string>;

    bool AreThere() const {
        for (const std::string& path : {arguments_.before, arguments_.after}) {
            std::error_code error;
            if (!std::filesystem::exists(platform::PathFromUtf8(SplitContainer(path).path), error)) {
                TellError(ePhrase::PathNothing, path);
                return false;
            }
        }
        return true;
    }

    bool AreOfOneKind() {
        isTree_ = IsTree(arguments_.after);
        if (IsTree(arguments_.before) != isTree_) {
            TellError(ePhrase::UsageTwoKinds, arguments_.before, arguments_.after);
            return false;
        }
        return true;
    }

    // An empty loose file stands for none, as version control has it.
    void Read(const std::string& typed, const eVisit& visit) {
        ReadInspected(
            typed,
            [&](const eInspectedFile& file) {
                if (!file.problem.IsEmpty()) {
                    TellProblem(file.problem.At(file.path));
                } else if (isTree_ || !file.content.empty()) {
                    visit(isTree_ ? NameBelow(typed, file) : LooseName(), file);
                }
            },
            eReadFiles::All);
    }

    const std::string& Label() const {
        return arguments_.label.empty() ? arguments_.after : arguments_.label;
    }
    // Two single files are one, whatever their names are.
    std::string LooseName() const { return FromUtf8(Label().substr(Label().rfind('/') + 1)).text; }

    eDigests DigestsOf(const std::string& typed) {
        eDigests digests;
        Read(typed, [&](const std::string& name, const eInspectedFile& file) {
            digests[name] = Sha256Hex(file.content);
        });
        return digests;
    }

    void TellWhatOneSideLacks(const eDigests& old, const eDigests& now) {
        for (const auto& [name, digest] : old) {
            if (!now.contains(name)) {
                difference_.files.push_back({ToUtf8(name), diff::eState::Removed, {}});
            }
        }
        for (const auto& [name, digest] : now) {
            if (!old.contains(name)) {
                difference_.files.push_back({ToUtf8(name), diff::eState::Added, {}});
            }
        }
    }

    void CompareOthers(const eDigests& old, const eDigests& now) {
        std::set<std::string> others;
        for (const auto& [name, digest] : old) {
            const auto found = now.find(name);
            if (found != now.end() && found->second != digest) {
                others.insert(name);
            } else if (found != now.end()) {
                ++difference_.same;
            }
        }
        if (others.empty()) {
            return;
        }
        std::map<std::string, diff::eFile> files;
        Read(arguments_.before, [&](const std::string& name, const eInspectedFile& file) {
            if (others.contains(name)) {
                files.emplace(name, diff::ReadFile(name, file.content));
            }
        });
        Read(arguments_.after, [&](const std::string& name, const eInspectedFile& file) {
            if (const auto before = files.find(name); before != files.end()) {
                Compare(before->second, diff::ReadFile(name, file.content));
            }
        });
    }

    void Compare(const diff::eFile& before, const diff::eFile& after) {
        eBilingual problem;
        difference_.files.push_back(diff::CompareFiles(before, after, arguments_.tolerances, problem));
        if (!problem.IsEmpty()) {
            TellProblem(problem.At(ToUtf8(after.name)));
        }
    }

    void TellProblem(const eBilingual& text) {
        TellError(text);
        hasProblem_ = true;
    }

    void Print() const {
        constexpr int kIndent = 2;
        const auto handler = inspect::eDescription::error_handler_t::replace;
        const std::string text = arguments_.asJson
                                     ? diff::Describe(difference_).dump(kIndent, ' ', false, handler) + "\n"
                                     : diff::TextOf(difference_, TerminalLanguage());
        std::fputs(text.c_str(), stdout);
        std::fflush(stdout);
    }

    const eArguments& arguments_;
    bool isTree_ = false;
    bool hasProblem_ = false;
    diff::eDifference difference_;
};

eBounds BoundsOf(diff::eTolerances& tolerances) {
    return {&tolerances.metres, &tolerances.degrees, &tolerances.decibels};
}

}  // namespace

void AddDiffCommand(CLI::App& program, std::function<int()>& action) {
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command =
        *program.add_subcommand("diff", "Say what has changed between written files, by meaning");
    const char* const kPaths =
        "Resource folder, model folder, container (game.pak), folder in one (game.pak:/units/), or file";
    command.add_option("OLD", arguments->before, kPaths)->required();
    command.add_option("NEW", arguments->after, kPaths)->required();
    AddToleranceFlag(command, arguments->bounds, BoundsOf(arguments->tolerances));
    command
        .add_option("--label", arguments->label,
                    "Path that two single files stand for, as version control has it")
        ->type_name("PATH");
    command.add_flag("--json", arguments->asJson, "As JSON");
    AddLanguageFlag(command);
    command.footer(
        "Files are compared by what they say: bones, volumes, zones and values of texts, triangles and\n"
        "vertices of meshes, bones of clips frame by frame, pictures in decibels. What lies within the\n"
        "tolerances is the same. Exit status: 0 the same, 1 different, 2 trouble.");
    command.callback([arguments, &action] {
        action = [arguments] {
            const bool isUsable = TakeBounds(arguments->bounds, BoundsOf(arguments->tolerances));
            return isUsable ? eDiffRun(*arguments).Run() : kExitUsage;
        };
    });
}

}  // namespace cli
