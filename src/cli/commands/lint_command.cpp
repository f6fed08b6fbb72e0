#include "cli/commands/lint_command.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "answers/animations.h"
#include "answers/lint.h"
#include "base/ansi.h"
#include "cli/flags/run_option_flags.h"
#include "cli/run/dry_run.h"
#include "cli/run/export_run.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/terminal_language.h"
#include "messages/utf8_words.h"

namespace cli {

namespace {

// The version of the keys of the JSON; rises when one is taken out or changes its meaning.
constexpr int kLintSchema = 1;

struct eArguments {
    std::vector<std::string> scenes;
    eExportFlags flags;  // of each scene
    bool isStrict = false;
    bool asJson = false;
};

// What was told of one node, or of no node.
struct eNodeMessages {
    std::string node;
    std::vector<const eToldMessage*> messages;
};

// From the worst to the mildest.
int Rank(const eToldMessage& message) {
    constexpr eSeverity kOrder[] = {eSeverity::Fatal, eSeverity::Error, eSeverity::Warning,
                                    eSeverity::Advice};
    return static_cast<int>(std::ranges::find(kOrder, message.Severity()) - kOrder);
}

// The node with the worst message comes first, and so does its worst message; else in the order of telling.
std::vector<eNodeMessages> ByNode(const std::vector<eToldMessage>& told) {
    std::vector<const eToldMessage*> sorted;
    sorted.reserve(told.size());
    for (const eToldMessage& message : told) {
        sorted.push_back(&message);
    }
    std::ranges::stable_sort(sorted, {}, [](const eToldMessage* message) { return Rank(*message); });
    std::vector<eNodeMessages> nodes;
    for (const eToldMessage* message : sorted) {
        auto node = std::ranges::find(nodes, message->place.node, &eNodeMessages::node);
        if (node == nodes.end()) {
            node = nodes.insert(nodes.end(), {message->place.node, {}});
        }
        node->messages.push_back(message);
    }
    return nodes;
}

std::string Indented(const std::string& text) {
    std::string lines;
    for (const char byte : text) {
        lines += byte == '\n' ? std::string("\n      ") : std::string(1, byte);
    }
    return lines;
}

ePhrase SeverityPhrase(eSeverity severity) {
    constexpr ePhrase kWords[] = {ePhrase::SeverityError, ePhrase::SeverityWarning, ePhrase::SeverityAdvice,
                                  ePhrase::SeverityFatal};
    return kWords[static_cast<std::size_t>(severity)];
}

void PrintNode(const eNodeMessages& node, eLanguage language) {
    std::printf("  %s\n", node.node.empty() ? Say(language, ePhrase::TheScene).c_str() : node.node.c_str());
    for (const eToldMessage* message : node.messages) {
        const eMessageRow& row = RowOf(message->id);
        const eBilingual cure{ToUtf8(row.russianCure), row.cure};
        std::printf("    %s %s: %s\n      %s\n", Say(language, SeverityPhrase(message->Severity())).c_str(),
                    row.code, Indented(message->text.In(language)).c_str(),
                    Say(language, ePhrase::HeadCure, cure.In(language)).c_str());
    }
}

// One line for each message, however often a run has told it.
std::vector<eToldMessage> Distinct(const std::vector<eToldMessage>& told) {
    std::vector<eToldMessage> distinct;
    for (const eToldMessage& message : told) {
        const auto isSame = [&](const eToldMessage& other) {
            return other.id == message.id && other.place.node == message.place.node &&
                   other.text == message.text;
        };
        if (std::ranges::none_of(distinct, isSame)) {
            distinct.push_back(message);
        }
    }
    return distinct;
}

// What was told of a scene, and the exit status that it deserves.
struct eLinted {
    std::string scene;
    const eRunJournal& journal;
    std::vector<eToldMessage> messages;
    int exitCode = kExitDone;
};

class eLintOutput {
public:
    explicit eLintOutput(const eArguments& ownArguments) : arguments(ownArguments) {}

    void Add(const eLinted& linted) {
        if (arguments.asJson) {
            all.push_back(Json(linted));
            return;
        }
        const eLanguage language = TerminalLanguage();
        std::printf("%s: %s\n", linted.scene.c_str(),
                    Say(language, ePhrase::CountMessage, linted.messages.size()).c_str());
        for (const eNodeMessages& node : ByNode(linted.messages)) {
            PrintNode(node, language);
        }
        std::fputs(answers::AnimationText(linted.journal, language).c_str(), stdout);
    }
    void Finish() const {
        if (arguments.asJson) {
            constexpr int kIndent = 2;
            std::printf("%s\n", all.dump(kIndent, ' ', false, eJson::error_handler_t::replace).c_str());
        }
        std::fflush(stdout);
    }

private:
    using eJson = nlohmann::ordered_json;

    static eJson Json(const eLinted& linted) {
        eJson json = {{"schema", kLintSchema}, {"scene", linted.scene}, {"messages", eJson::array()}};
        for (const eNodeMessages& node : ByNode(linted.messages)) {
            for (const eToldMessage* message : node.messages) {
                json["messages"].push_back(MessageJson(*message));
            }
        }
        json["animations"] = answers::DescribeAnimations(linted.journal);
        json["exit"] = linted.exitCode;
        return json;
    }

    const eArguments& arguments;
    eJson all = eJson::array();
};

// Errors first; what a run does not mind counts where the user is strict.
int ExitCodeOf(const eRunRecord& record, const std::vector<eToldMessage>& messages, bool isStrict) {
    if (record.exitCode != kExitDone) {
        return record.exitCode;
    }
    return isStrict && !messages.empty() ? kExitAdvice : kExitDone;
}

int LintOne(const eArguments& arguments, const std::string& scene, eLintOutput& output) {
    eExportFlags flags = arguments.flags;
    flags.scene = scene;
    flags.quiet = true;
    // A scene's faults hang on no resource tree, and what lies in one must not hide a fault of a texture.
    if (!flags.silent && !flags.resourceRoot) {
        flags.resourceRoot = NoFolder();
    }
    eDryRun dry;
    dry.isMute = true;
    int exitCode = kExitUsage;
    dry.tell = [&](Export& run, const eRunRecord& record) {
        eLinted linted{scene, dry.journal, record.messages};
        for (const eMessage& advice : answers::LintScene(run)) {
            linted.messages.push_back(Utf8Message({"", advice}));
        }
        linted.messages = Distinct(linted.messages);
        exitCode = linted.exitCode = ExitCodeOf(record, linted.messages, arguments.isStrict);
        output.Add(linted);
        if (record.exitCode == kExitFatal) {
            output.Finish();
        }
    };
    RunWithoutWriting(flags, dry);
    return exitCode;
}

// The gravest of several scenes.
int RunLint(const eArguments& arguments) {
    eLintOutput output(arguments);
    int gravest = kExitDone;
    for (const std::string& scene : arguments.scenes) {
        const int exitCode = LintOne(arguments, scene, output);
        gravest = gravest == kExitDone || (exitCode != kExitDone && exitCode < gravest) ? exitCode : gravest;
        if (exitCode == kExitCancelled) {
            break;
        }
    }
    output.Finish();
    return gravest;
}

}  // namespace

void AddLintCommand(CLI::App& program, std::function<int()>& action) {
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command =
        *program.add_subcommand("lint", "Say what is wrong with scenes and what may be a slip");
    command.add_option("SCENE", arguments->scenes, "Scene documents, glTF or FBX files")->required();
    command.add_flag("--strict", arguments->isStrict, "Warnings and advice count: exit status 4");
    command.add_flag("--json", arguments->asJson, "As JSON: a list with an object per scene");
    AddRunFlags(command, arguments->flags);
    command.footer(
        "All that an export of the scene would tell, and what only a look ahead can: by node, the worst "
        "first;\n"
        "below it a table of the animations.\n"
        "Nothing is written. Exit status: 0 clean, 2 a scene that can't be read, 3 errors, 4 warnings or "
        "advice\n"
        "with --strict.");
    command.callback([arguments, &action] { action = [arguments] { return RunLint(*arguments); }; });
}

}  // namespace cli
