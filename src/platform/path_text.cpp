#include "platform/path_text.h"

#include "platform/code_page.h"

namespace platform {
namespace {

constexpr char kMark = '\x98';
constexpr std::string_view kDigits = "0123456789abcdefghijklmnopqrstuv";
constexpr unsigned kDigitBits = 5;
constexpr unsigned kEscapeDigits = kEscapeLength - 1;
constexpr char32_t kFirstBeyond = 0x100000;
constexpr char32_t kMarkCharacter = 0x98;

bool IsLacking(char32_t character) {
    return character == kMarkCharacter || AnsiByte(character) < 0;
}

void AppendEscape(std::string& text, char32_t character) {
    text += kMark;
    for (unsigned shift = kEscapeDigits * kDigitBits; shift != 0;) {
        shift -= kDigitBits;
        text += kDigits[character >> shift & 0x1F];
    }
}

}  // namespace

std::optional<std::string> PathTextFromUtf8(std::string_view utf8) {
    std::string text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const eUtf8Step step = ReadUtf8(utf8);
        if (step.length == 0 || step.character >= kFirstBeyond) {
            return std::nullopt;
        }
        if (IsLacking(step.character)) {
            AppendEscape(text, step.character);
        } else {
            text += static_cast<char>(AnsiByte(step.character));
        }
        utf8.remove_prefix(step.length);
    }
    return text;
}

std::optional<char32_t> ReadEscape(std::string_view text) {
    if (text.size() < kEscapeLength || text[0] != kMark) {
        return std::nullopt;
    }
    char32_t character = 0;
    for (const char digit : text.substr(1, kEscapeLength - 1)) {
        const std::size_t value = kDigits.find(digit);
        if (value == std::string_view::npos) {
            return std::nullopt;
        }
        character = character << kDigitBits | static_cast<char32_t>(value);
    }
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    return IsLacking(character) && !isSurrogate ? std::optional(character) : std::nullopt;
}

bool HasEscape(std::string_view text) {
    for (std::size_t at = text.find(kMark); at != std::string_view::npos; at = text.find(kMark, at + 1)) {
        if (ReadEscape(text.substr(at))) {
            return true;
        }
    }
    return false;
}

}  // namespace platform
