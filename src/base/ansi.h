// Text in code page 1251: literals, the way to and from UTF-8, and comparing without regard to case.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/code_page.h"

namespace ansi_detail {

// Not constexpr, so that a literal that calls it does not compile.
void TheCodePageLacksThisCharacter();

// A literal of the UTF-8 source in code page 1251. The converted text is never longer.
template <std::size_t Size>
struct eLiteral {
    char bytes[Size] = {};

    consteval eLiteral(const char (&utf8)[Size]) {
        std::size_t length = 0;
        for (std::string_view rest(utf8, Size - 1); !rest.empty();) {
            const platform::eUtf8Step step = platform::ReadUtf8(rest);
            const int byte = step.length != 0 ? platform::AnsiByte(step.character) : -1;
            if (byte < 0) {
                TheCodePageLacksThisCharacter();
            }
            bytes[length++] = static_cast<char>(byte);
            rest.remove_prefix(step.length);
        }
    }
};

}  // namespace ansi_detail

// "Ошибка"_ansi: the text in code page 1251, ended by a zero byte, alive as long as the program.
template <ansi_detail::eLiteral literal>
constexpr const char* operator""_ansi() {
    return literal.bytes;
}

// Conversion at the edges of the system.
std::string ToUtf8(std::string_view ansi);

struct eFromUtf8 {
    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::string text;              // code page 1251; what the page lacks, and broken bytes, are "_"
    std::size_t badOffset = none;  // byte of the first character that became "_"

    bool IsExact() const { return badOffset == none; }
};

// One "_" stands for each character that the page lacks and for each byte that is not well-formed.
eFromUtf8 FromUtf8(std::string_view utf8);

// Letters of the whole page, Latin and Cyrillic.
std::string LowerAnsi(std::string_view text);
bool EqualNoCase(std::string_view left, std::string_view right);
// Below, equal to or above zero; by the lower-case bytes, shorter first at an equal beginning.
int CompareNoCase(std::string_view left, std::string_view right);

// A to Z only; letters beyond ASCII keep their case and count as different.
constexpr char LowerAsciiByte(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte;
}
std::string LowerAscii(std::string_view text);
bool EqualNoAsciiCase(std::string_view left, std::string_view right);
