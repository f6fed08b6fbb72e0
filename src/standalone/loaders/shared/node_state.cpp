#include "standalone/loaders/shared/node_state.h"

#include <algorithm>
#include <array>

#include "base/ansi.h"

namespace standalone {
namespace {

std::string OneLine(std::string_view utf8, eImportReport& report) {
    std::string line(utf8);
    std::ranges::replace_if(
        line, [](char byte) { return byte == '\r' || byte == '\n' || byte == '\t'; }, ' ');
    return report.Ansi(line);
}

}  // namespace

std::string PropertyLineOf(std::string_view key, std::string_view value, eImportReport& report) {
    const std::string line = OneLine(key, report);
    return value.empty() ? line : line + "=" + OneLine(value, report);
}

std::string PropertyTextOf(std::string_view utf8) {
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
