#include "platform/code_page.h"

#include "platform/path_text.h"

namespace platform {
namespace {

constexpr char32_t LowerLetter(char32_t letter) {
    const bool latin = letter >= U'A' && letter <= U'Z';
    const bool cyrillic = letter >= 0x0410 && letter <= 0x042F;
    if (latin || cyrillic) {
        return letter + 32;
    }
    if (letter >= 0x0400 && letter <= 0x040F) {
        return letter + 80;
    }
    return letter == 0x0490 ? 0x0491 : letter;
}

constexpr std::array<char, 256> MakeLowerTable() {
    std::array<char, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        const char32_t letter = byte < 0x80 ? static_cast<char32_t>(byte) : ansiUpperHalf[byte - 0x80];
        table[byte] = static_cast<char>(AnsiByte(LowerLetter(letter)));
    }
    return table;
}

constexpr std::array<char, 256> lowerTable = MakeLowerTable();

void AppendUtf8(std::string& utf8, char32_t character) {
    if (character < 0x80) {
        utf8 += static_cast<char>(character);
    } else if (character < 0x800) {
        utf8 += static_cast<char>(0xC0 | (character >> 6));
        utf8 += static_cast<char>(0x80 | (character & 0x3F));
    } else {
        if (character < 0x10000) {
            utf8 += static_cast<char>(0xE0 | (character >> 12));
        } else {
            utf8 += static_cast<char>(0xF0 | (character >> 18));
            utf8 += static_cast<char>(0x80 | ((character >> 12) & 0x3F));
        }
        utf8 += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
        utf8 += static_cast<char>(0x80 | (character & 0x3F));
    }
}

}  // namespace

char LowerAnsiByte(char byte) {
    return lowerTable[static_cast<unsigned char>(byte)];
}

std::string Utf8FromAnsi(std::string_view ansi) {
    std::string utf8;
    utf8.reserve(ansi.size());
    for (std::size_t at = 0; at < ansi.size(); ++at) {
        const auto value = static_cast<unsigned char>(ansi[at]);
        if (value < 0x80) {
            utf8 += ansi[at];
        } else if (const std::optional<char32_t> escaped = ReadEscape(ansi.substr(at))) {
            AppendUtf8(utf8, *escaped);
            at += kEscapeLength - 1;
        } else {
            AppendUtf8(utf8, ansiUpperHalf[value - 0x80u]);
        }
    }
    return utf8;
}

std::optional<std::string> AnsiFromUtf8(std::string_view utf8) {
    std::string ansi;
    ansi.reserve(utf8.size());
    while (!utf8.empty()) {
        const eUtf8Step step = ReadUtf8(utf8);
        const int byte = step.length != 0 ? AnsiByte(step.character) : -1;
        if (byte < 0) {
            return std::nullopt;
        }
        ansi += static_cast<char>(byte);
        utf8.remove_prefix(step.length);
    }
    return ansi;
}

}  // namespace platform
