#include "standalone/loaders/shared/node_state.h"

#include <algorithm>
#include <array>

#include "base/ansi.h"

namespace standalone {
namespace {

std::string OneLine(std::string_view utf8) {
    std::string line(utf8);
    std::ranges::replace_if(
        line, [](char byte) { return byte == '\r' || byte == '\n' || byte == '\t'; }, ' ');
    return line;
}

void TellLossyLines(std::string_view text, const std::string& owner, eImportReport& report) {
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (!FromUtf8(line).IsExact()) {
            report.Ansi(line, owner);
        }
    }
}

}  // namespace

std::string PropertyLineOf(std::string_view key, std::string_view value, const std::string& owner,
                           eImportReport& report) {
    const std::string line = OneLine(key);
    return report.Ansi(value.empty() ? line : line + "=" + OneLine(value), owner);
}

std::string PropertyTextOf(std::string_view utf8, const std::string& owner, eImportReport& report) {
    TellLossyLines(utf8, owner, report);
    std::string text;
    for (const char byte : FromUtf8(utf8).text) {
        if (byte == '\n' && !text.ends_with('\r')) {
            text += '\r';
        }
        text += byte == '\0' ? '_' : byte;
    }
    return text;
}

eShapeWord ShapeOfWord(std::string_view word) {
    constexpr std::array<std::string_view, 4> kWords = {"", "box", "sphere", "cylinder"};
    const auto found = std::ranges::find(kWords, word);
    return found == kWords.end() ? eShapeWord::None : static_cast<eShapeWord>(found - kWords.begin());
}

bool ReadGroupWord(std::string_view word, eNodeData& record) {
    record.groupHead = record.groupHead || word == "head";
    record.groupMember = record.groupMember || word == "member";
    return word == "head" || word == "member";
}

}  // namespace standalone
