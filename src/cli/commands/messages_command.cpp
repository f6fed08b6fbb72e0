#include "cli/commands/messages_command.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/ansi.h"
#include "base/plural_form.h"
#include "cli/flags/language_flag.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/terminal_text.h"
#include "messages/message_table.h"

namespace cli {

namespace {

constexpr const char* kPageHead =
    "# Messages\n"
    "\n"
    "Everything that the exporter tells while it works, by its code. `zyrexport messages --markdown` writes "
    "this\n"
    "page; `zyrexport messages CODE` explains one message. A code never changes its meaning, so scripts may "
    "hang\n"
    "on it; the report of a run (`--report FILE`, see report.schema.json) has it beside both texts.\n"
    "\n"
    "An **error** and a **warning** are boxes of the system. A **loss** is a box as well: the run leaves out "
    "or\n"
    "changes something that the scene asks for; it is an error where a whole file or node is lost, else a "
    "warning.\n"
    "**Advice** never shows a box and never changes the exit status: it goes to the log, the terminal and "
    "the\n"
    "report. A **record** is a warning of the base library or of what reads a scene file. A **fatal** error "
    "ends "
    "the run.\n";

const char* KindWord(eMessageKind kind) {
    switch (kind) {
        case eMessageKind::LossError:
            return "loss, error";
        case eMessageKind::LossWarning:
            return "loss, warning";
        case eMessageKind::Record:
            return "record, warning";
        default:
            return SeverityWord(SeverityOf(kind));
    }
}

// The lines of a text as one quotation.
std::string Quoted(const std::string& text) {
    std::string quoted = "> ";
    for (const char byte : text) {
        quoted += byte == '\n' ? std::string("\\\n> ") : std::string(1, byte);
    }
    return quoted;
}

// The texts with their places, as they are for many.
std::string English(const eMessageRow& row) {
    return WithForms(row.english, eLanguage::English, {});
}
std::string Russian(const eMessageRow& row) {
    return WithForms(ToUtf8(row.russian), eLanguage::Russian, {});
}

void PrintPage() {
    std::fputs(kPageHead, stdout);
    for (const eMessageRow& row : AllMessages()) {
        std::printf("\n## %s\n\n%s\n\n%s\n\nCure: %s\n\n%s\n\nЧто делать: %s\n", row.code, KindWord(row.kind),
                    Quoted(English(row)).c_str(), row.cure, Quoted(Russian(row)).c_str(),
                    ToUtf8(row.russianCure).c_str());
    }
}

void PrintRow(const eMessageRow& row) {
    std::printf("%s (%s)\n%s\ncure: %s\n%s\nчто делать: %s\n", row.code, KindWord(row.kind),
                English(row).c_str(), row.cure, Russian(row).c_str(), ToUtf8(row.russianCure).c_str());
}

int PrintCodes(const std::vector<std::string>& codes) {
    int exitCode = kExitDone;
    for (const std::string& code : codes) {
        if (const eMessageRow* row = FindMessage(code)) {
            PrintRow(*row);
        } else {
            TellError(ePhrase::NoSuchMessage, code);
            exitCode = kExitUsage;
        }
    }
    return exitCode;
}

int PrintAllCodes() {
    for (const eMessageRow& row : AllMessages()) {
        std::printf("%s (%s)\n", row.code, KindWord(row.kind));
    }
    return kExitDone;
}

}  // namespace

void AddMessagesCommand(CLI::App& program, std::function<int()>& action) {
    struct eArguments {
        std::vector<std::string> codes;
        bool markdown = false;
    };
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command = *program.add_subcommand("messages", "Explain what the exporter tells");
    command.add_option("CODE", arguments->codes, "Codes to explain; without any all codes are listed");
    command.add_flag("--markdown", arguments->markdown, "Print the page of all messages");
    AddLanguageFlag(command);
    command.callback([arguments, &action] {
        action = [arguments] {
            if (arguments->markdown) {
                PrintPage();
                return static_cast<int>(kExitDone);
            }
            return arguments->codes.empty() ? PrintAllCodes() : PrintCodes(arguments->codes);
        };
    });
}

}  // namespace cli
