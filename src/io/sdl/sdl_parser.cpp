#include "io/sdl/sdl_parser.h"

#include <algorithm>

#include "base/format.h"
#include "base/number_text.h"

namespace xIo::xSdl {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
bool IsWordByte(char c) {
    return IsLetter(c) || IsDigit(c);
}
bool IsHexDigit(char c) {
    return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}
// What belongs to the tag of a block, once "#" has followed the brace.
bool IsTagByte(char c) {
    return IsWordByte(c) || c == '#' || c == '-' || c == '+';
}

// Eight digits are all that 32 bits hold; of more the last eight count.
std::int32_t ReadHex(std::string_view digits) {
    std::uint32_t value = 0;
    for (const char c : digits) {
        const int digit = IsDigit(c) ? c - '0' : (c | 0x20) - 'a' + 10;
        value = value << 4 | static_cast<std::uint32_t>(digit);
    }
    return static_cast<std::int32_t>(value);
}

}  // namespace

eParser::eParser(std::string sourceName, std::string sourceText, int sourceLine)
    : name(std::move(sourceName)),
      text(std::move(sourceText)),
      firstLine(sourceLine),
      line(sourceLine),
      checkPoint(*this) {}

const eToken& eParser::Next() {
    if (ungot) {
        ungot = false;
        return current;
    }
    SkipBlanks();
    tokenBegin = position;
    current = {};
    current.line = line;
    current.type = Scan();
    if (current.type != kTokenString && current.type != kTokenSingleString) {
        current.text = std::string_view(text).substr(tokenBegin, position - tokenBegin);
        ReadNumbers();
    }
    return current;
}

void eParser::Unget() {
    ungot = true;
}

std::string_view eParser::Source(std::size_t begin, std::size_t end) const {
    return std::string_view(text).substr(begin, end - begin);
}

void eParser::SkipBlanks() {
    while (position < text.size()) {
        const char c = text[position];
        if (c == ';') {
            position = std::min(text.find('\n', position), text.size());
            continue;
        }
        if (!IsBlank(c)) {
            return;
        }
        line += c == '\n' ? 1 : 0;
        ++position;
    }
}

eTokenType eParser::Scan() {
    if (position >= text.size()) {
        return kTokenEnd;
    }
    const char c = text[position];
    if (IsLetter(c)) {
        return ScanWord(kTokenIdent);
    }
    if (IsDigit(c) || ((c == '-' || c == '+') && IsDigit(At(position + 1)))) {
        return ScanNumber();
    }
    switch (c) {
        case '{':
            return ScanBlockBegin();
        case '"':
        case '\'':
            return ScanString(c);
        case '%':
            return ScanWord(kTokenPercentName);
        case '-':
        case '+':
        case '*':
        case '/':
        case '=':
        case '<':
        case '>':
        case '!':
            return ScanOperator(true);
        case '&':
        case '|':
            return ScanOperator(false);
        default:
            ++position;
            return c == '}' ? kTokenBlockEnd : c == '(' ? kTokenOpen : c == ')' ? kTokenClose : kTokenError;
    }
}

eTokenType eParser::ScanWord(eTokenType type) {
    ++position;
    while (IsWordByte(At(position))) {
        ++position;
    }
    return type;
}

eTokenType eParser::ScanBlockBegin() {
    ++position;
    if (At(position) == '#') {
        while (IsTagByte(At(position))) {
            ++position;
        }
    }
    return kTokenBlockBegin;
}

// Up to the same quote; a backslash takes the next character in.
eTokenType eParser::ScanString(char quote) {
    const std::size_t begin = ++position;
    while (position < text.size()) {
        const char c = text[position];
        if (c == '\n' || c == '\r') {
            return kTokenError;
        }
        if (c == quote) {
            current.text = std::string_view(text).substr(begin, position - begin);
            ++position;
            return quote == '"' ? kTokenString : kTokenSingleString;
        }
        position += c == '\\' && At(position + 1) != '\n' && At(position + 1) != '\r' ? 2 : 1;
    }
    position = text.size();
    return kTokenError;
}

eTokenType eParser::ScanNumber() {
    if (At(position) == '0' && (At(position + 1) | 0x20) == 'x') {
        return ScanHexadecimal();
    }
    eTokenType type = kTokenInteger;
    ++position;
    while (IsDigit(At(position)) || At(position) == '.') {
        type = At(position) == '.' ? kTokenReal : type;
        ++position;
    }
    if ((At(position) | 0x20) == 'e') {
        type = kTokenReal;
        ++position;
        while (IsDigit(At(position)) || At(position) == '-' || At(position) == '+') {
            ++position;
        }
    }
    return type;
}

eTokenType eParser::ScanHexadecimal() {
    position += 2;
    while (IsHexDigit(At(position))) {
        ++position;
    }
    current.integer = ReadHex(std::string_view(text).substr(tokenBegin + 2, position - tokenBegin - 2));
    current.real = static_cast<float>(current.integer);
    return kTokenInteger;
}

eTokenType eParser::ScanOperator(bool takesEqual) {
    ++position;
    if (takesEqual && At(position) == '=') {
        ++position;
    }
    return kTokenOperator;
}

void eParser::ReadNumbers() {
    const bool isHexadecimal = current.text.size() > 1 && (current.text[1] | 0x20) == 'x';
    if (current.type == kTokenReal) {
        current.real = static_cast<float>(ReadReal(current.text));
        current.integer = ReadInteger(current.text);
    } else if (current.type == kTokenInteger && !isHexadecimal) {
        current.integer = ReadInteger(current.text);
        current.real = static_cast<float>(current.integer);
    }
}

std::string eParser::Text() const {
    return "(" + name + ")";
}

std::string eParser::Location() const {
    return ", " + IntegerText(current.line);
}

std::string eParser::Detail() const {
    constexpr int kLinesAround = 2;
    std::string detail;
    int number = firstLine;
    for (std::size_t begin = 0; begin <= text.size() && number <= current.line + kLinesAround; ++number) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        if (number >= current.line - kLinesAround) {
            detail += (format("%1%:") % number).Text() + "\t" + ShownLine(begin, end) + "\n";
        }
        begin = end + 1;
    }
    return detail;
}

// A report shows of a long line what stands around the token, of others their beginning.
std::string eParser::ShownLine(std::size_t begin, std::size_t end) const {
    constexpr std::size_t kLongestLine = 200;
    constexpr char kMark = static_cast<char>(0xAB);
    const bool holdsToken = tokenBegin >= begin && tokenBegin <= end;
    if (holdsToken && tokenBegin - begin > kLongestLine / 2) {
        begin = tokenBegin - kLongestLine / 2;
    }
    std::string shown = text.substr(begin, std::min(end - begin, kLongestLine));
    if (holdsToken) {
        shown.insert(tokenBegin - begin, 1, kMark);
    }
    std::erase(shown, '\r');
    return shown;
}

}  // namespace xIo::xSdl
