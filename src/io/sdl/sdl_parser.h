#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/diagnostics.h"

namespace xIo::xSdl {

enum eTokenType {
    kTokenError = -1,  // a character that starts no token, a line end inside a string
    kTokenEnd = 0,
    kTokenIdent = 1,
    kTokenString = 2,        // in double quotes
    kTokenSingleString = 3,  // in single quotes
    kTokenBlockBegin = 4,
    kTokenBlockEnd = 5,
    kTokenOpen = 7,   // (
    kTokenClose = 8,  // )
    kTokenReal = 9,
    kTokenInteger = 10,
    kTokenOperator = 12,
    kTokenPercentName = 13,  // % and an identifier
};

struct eToken {
    eTokenType type = kTokenEnd;
    // As it stands in the source; of a string what lies between the quotes, escapes and all. Points into the
    // parser's text.
    std::string_view text;
    float real = 0;  // of a number
    std::int32_t integer = 0;
    int line = 1;
};

// The tokens of one source text. While it lives it is a check-point of the thread, so that every report names
// the source, the line, and the text around it. It does not move: the check-point refers to it.
class eParser : public xDebug::xCheckPoint::eInformer {
public:
    // `name` says where the text comes from; `firstLine` is the line of the source at which it begins.
    eParser(std::string name, std::string text, int firstLine = 1);

    const eToken& Next();
    // The next call of Next gives the present token again.
    void Unget();
    const eToken& Current() const { return current; }

    // The text between two positions.
    std::size_t Position() const { return position; }
    std::string_view Source(std::size_t begin, std::size_t end) const;
    int Line() const { return line; }
    const std::string& Name() const { return name; }

    std::string Text() const override;
    std::string Location() const override;
    // Up to five lines around the present token, with the byte 0xAB in front of it.
    std::string Detail() const override;
    bool HasDetail() const override { return true; }

private:
    void SkipBlanks();
    eTokenType Scan();
    eTokenType ScanString(char quote);
    eTokenType ScanNumber();
    eTokenType ScanHexadecimal();
    eTokenType ScanOperator(bool takesEqual);
    eTokenType ScanWord(eTokenType type);
    eTokenType ScanBlockBegin();
    void ReadNumbers();
    std::string ShownLine(std::size_t begin, std::size_t end) const;
    char At(std::size_t index) const { return index < text.size() ? text[index] : '\0'; }

    std::string name;
    std::string text;
    std::size_t position = 0;  // behind the present token
    std::size_t tokenBegin = 0;
    int firstLine;
    int line;
    eToken current;
    bool ungot = false;
    xDebug::xCheckPoint::eScope checkPoint;
};

}  // namespace xIo::xSdl
