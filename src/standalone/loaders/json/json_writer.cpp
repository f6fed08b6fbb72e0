#include "standalone/loaders/json/json_writer.h"

#include <charconv>
#include <cmath>

#include "base/ansi.h"

namespace standalone {
namespace {

constexpr std::size_t kNumberSize = 32;

void AppendEscaped(std::string& text, char byte) {
    constexpr std::string_view digits = "0123456789abcdef";
    switch (byte) {
        case '"':
        case '\\':
            text += {'\\', byte};
            return;
        case '\n':
            text += "\\n";
            return;
        case '\r':
            text += "\\r";
            return;
        case '\t':
            text += "\\t";
            return;
        default:
            text += "\\u00";
            text +=
                {digits[static_cast<std::size_t>(byte >> 4)], digits[static_cast<std::size_t>(byte & 15)]};
    }
}

bool NeedsEscape(char byte) {
    return byte == '"' || byte == '\\' || (byte >= 0 && byte < ' ');
}

}  // namespace

void eJsonWriter::BeforeValue() {
    if (needsComma) {
        text += ',';
    }
    needsComma = true;
}

void eJsonWriter::Open(char bracket) {
    BeforeValue();
    text += bracket;
    needsComma = false;
}

void eJsonWriter::Close(char bracket) {
    text += bracket;
    needsComma = true;
}

void eJsonWriter::WriteText(std::string_view ansi) {
    text += '"';
    for (const char byte : ToUtf8(ansi)) {
        if (NeedsEscape(byte)) {
            AppendEscaped(text, byte);
        } else {
            text += byte;
        }
    }
    text += '"';
}

void eJsonWriter::Key(std::string_view key) {
    BeforeValue();
    WriteText(key);
    text += ':';
    needsComma = false;
}

void eJsonWriter::Null() {
    BeforeValue();
    text += "null";
}

void eJsonWriter::Value(bool value) {
    BeforeValue();
    text += value ? "true" : "false";
}

template <class Number>
void eJsonWriter::WriteNumber(Number value) {
    BeforeValue();
    char digits[kNumberSize];
    const auto result = std::to_chars(digits, digits + kNumberSize, value);
    text.append(digits, result.ptr);
}

void eJsonWriter::Value(int value) {
    WriteNumber(value);
}

void eJsonWriter::Value(std::uint32_t value) {
    WriteNumber(value);
}

void eJsonWriter::Value(double value) {
    hasLostNumbers = hasLostNumbers || !std::isfinite(value);
    WriteNumber(std::isfinite(value) ? value : 0);
}

void eJsonWriter::Value(float value) {
    hasLostNumbers = hasLostNumbers || !std::isfinite(value);
    WriteNumber(std::isfinite(value) ? value : 0);
    // As an integer a zero would lose its sign.
    if (value == 0 && std::signbit(value)) {
        text += ".0";
    }
}

void eJsonWriter::Value(std::string_view value) {
    BeforeValue();
    WriteText(value);
}

void eJsonWriter::Value(const host::Point2& value) {
    BeginList();
    Value(value.x);
    Value(value.y);
    EndList();
}

void eJsonWriter::Value(const host::Point3& value) {
    BeginList();
    Value(value.x);
    Value(value.y);
    Value(value.z);
    EndList();
}

void eJsonWriter::Value(const host::Color& value) {
    Value(host::Point3{value.r, value.g, value.b});
}

void eJsonWriter::Value(const host::ClassId& value) {
    BeginList();
    Value(value.a);
    Value(value.b);
    EndList();
}

void eJsonWriter::Value(const host::Matrix3& value) {
    BeginList();
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 3; ++column) {
            Value(value.GetRow(row)[column]);
        }
    }
    EndList();
}

void eJsonWriter::Value(const eRotation& value) {
    BeginList();
    Value(value.x);
    Value(value.y);
    Value(value.z);
    Value(value.w);
    EndList();
}

}  // namespace standalone
