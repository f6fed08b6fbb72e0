#include "cli/terminal/usage_error.h"

#include <sstream>

#include "cli/terminal/terminal_language.h"
#include "messages/phrase_match.h"

namespace cli {

namespace {

// The words of the library's errors. A phrase that is a special case of another one stands before it.
constexpr ePhrase kUsage[] = {
    ePhrase::UsageMore,       ePhrase::UsageNoCommand,   ePhrase::UsageExtraWord,  ePhrase::UsageExtraWords,
    ePhrase::UsageUnreadable, ePhrase::UsageOutOfRange,  ePhrase::UsageTooFew,     ePhrase::UsageTooMany,
    ePhrase::UsageNoValue,    ePhrase::UsageForeignWord, ePhrase::UsageOneTexture, ePhrase::UsageSwitch,
    ePhrase::UsageTruth,      ePhrase::UsageOverride,    ePhrase::UsageExcludes,   ePhrase::UsageRequires,
    ePhrase::UsageMissing,
};

}  // namespace

std::string UsageErrorText(const CLI::App* program, const CLI::Error& error) {
    std::istringstream lines(CLI::FailureMessage::simple(program, error));
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        text += ByPhrase(line, kUsage).In(TerminalLanguage()) + "\n";
    }
    return text;
}

}  // namespace cli
