#include "cli/terminal/terminal_text.h"

#include <algorithm>
#include <cstdio>

#include "base/ansi.h"

namespace cli {

namespace {

struct eActionWord {
    platform::eFileAction action;
    const char* word;
    ePhrase told;
};

constexpr eActionWord kActions[] = {
    {platform::eFileAction::Written, "written", ePhrase::ToldWritten},
    {platform::eFileAction::Copied, "copied", ePhrase::ToldCopied},
    {platform::eFileAction::Kept, "kept", ePhrase::ToldKept},
    {platform::eFileAction::Deleted, "deleted", ePhrase::ToldDeleted},
    {platform::eFileAction::Lost, "lost", ePhrase::ToldLost},
};

const eActionWord& WordsOf(platform::eFileAction action) {
    return *std::ranges::find(kActions, action, &eActionWord::action);
}

}  // namespace

void TellError(const eBilingual& text) {
    std::fprintf(stderr, "error: %s\n", text.In(TerminalLanguage()).c_str());
}

void TellWarning(const eBilingual& text) {
    std::fprintf(stderr, "warning: %s\n", text.In(TerminalLanguage()).c_str());
}

void Print(const eBilingual& line) {
    std::printf("%s\n", line.In(TerminalLanguage()).c_str());
    std::fflush(stdout);
}

void TellFile(platform::eFileAction action, const std::string& path) {
    std::printf("%s\n", Say(TerminalLanguage(), WordsOf(action).told, path).c_str());
}

void TellMeshOrder(const eMeshOrder& order) {
    const eBilingual triangles = Utf8Words(ePhrase::CountTriangle, order.after.triangles);
    std::printf("%s\n", Say(TerminalLanguage(), ePhrase::MeshOrder, ToUtf8(order.mesh), triangles,
                            order.before.MissesPerTriangle(), order.after.MissesPerTriangle(),
                            order.before.MissesPerVertex(), order.after.MissesPerVertex())
                            .c_str());
}

const char* ActionWord(platform::eFileAction action) {
    return WordsOf(action).word;
}

}  // namespace cli
