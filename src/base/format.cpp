#include "base/format.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdio>
#include <variant>

#include "base/number_text.h"
#include "base/thread_storage.h"

namespace {

// The parts of a directive: "%-08.3f" has the flags "-0", width 8, precision 3 and the conversion 'f'.
struct eDirective {
    std::string flags;
    int width = 0;
    int precision = -1;
    char conversion = '\0';
    std::size_t length = 0;  // bytes in the text, from the percent sign on; 0 if the directive breaks off
};

}  // namespace

// A value on its way into the text.
struct format::eValue {
    std::variant<std::string_view, double, std::int64_t, std::uint64_t> content;

    std::string PlainText() const;
    std::string Print(const eDirective& directive) const;
};

namespace {

// One formatted piece of a printf-style text has room here.
using FmtBuf = std::array<char, 8192>;

FmtBuf& ThreadBuffer() {
    static eThreadStorage<FmtBuf> storage;
    return storage.Get();
}

bool IsOneOf(char byte, std::string_view set) {
    return set.find(byte) != std::string_view::npos;
}

int ReadDigits(std::string_view text, std::size_t& index) {
    constexpr int widest = 4096;
    int value = 0;
    for (; index < text.size() && text[index] >= '0' && text[index] <= '9'; ++index) {
        value = std::min(value * 10 + (text[index] - '0'), widest);
    }
    return value;
}

// text begins with the percent sign.
eDirective ReadDirective(std::string_view text) {
    eDirective directive;
    std::size_t index = 1;
    for (; index < text.size() && IsOneOf(text[index], "-+ #0"); ++index) {
        directive.flags += text[index];
    }
    directive.width = ReadDigits(text, index);
    if (index < text.size() && text[index] == '.') {
        ++index;
        directive.precision = ReadDigits(text, index);
    }
    while (index < text.size() && IsOneOf(text[index], "hlLIqjzt")) {
        ++index;
    }
    if (index < text.size()) {
        directive.conversion = text[index];
        directive.length = index + 1;
    }
    return directive;
}

std::string Padded(const eDirective& directive, std::string piece) {
    const auto width = static_cast<std::size_t>(directive.width);
    if (piece.size() < width) {
        const bool left = IsOneOf('-', directive.flags);
        piece.insert(left ? piece.size() : 0, width - piece.size(), ' ');
    }
    return piece;
}

std::string PrintText(const eDirective& directive, std::string_view text) {
    const bool cut = directive.precision >= 0 && directive.conversion == 's';
    return Padded(directive,
                  std::string(cut ? text.substr(0, static_cast<std::size_t>(directive.precision)) : text));
}

// lengthModifier belongs to the type of the value.
template <class Number>
std::string PrintNumber(const eDirective& directive, const char* lengthModifier, Number value) {
    const std::string pattern = "%" + directive.flags + "*.*" + lengthModifier + directive.conversion;
    FmtBuf& buffer = ThreadBuffer();
    const int length = std::snprintf(buffer.data(), buffer.size(), pattern.c_str(), directive.width,
                                     directive.precision, value);
    return {buffer.data(), std::min(static_cast<std::size_t>(std::max(length, 0)), buffer.size() - 1)};
}

std::string PrintInteger(const eDirective& directive, long long value) {
    return PrintNumber(directive, "ll", value);
}

std::string PrintReal(const eDirective& directive, double value) {
    if (directive.conversion == 'g' && directive.precision < 0 && directive.flags.empty()) {
        return Padded(directive, RealText(value));
    }
    std::string text = PrintNumber(directive, "", value);
    const std::string_view separator = std::localeconv()->decimal_point;
    if (const std::size_t place = text.find(separator); place != std::string::npos) {
        text.replace(place, separator.size(), ".");
    }
    return text;
}

}  // namespace

std::string format::eValue::PlainText() const {
    if (const auto* string = std::get_if<std::string_view>(&content)) {
        return std::string(*string);
    }
    if (const auto* real = std::get_if<double>(&content)) {
        return RealText(*real);
    }
    if (const auto* integer = std::get_if<std::int64_t>(&content)) {
        return IntegerText(*integer);
    }
    return std::to_string(std::get<std::uint64_t>(content));
}

std::string format::eValue::Print(const eDirective& directive) const {
    if (const auto* real = std::get_if<double>(&content); real && IsOneOf(directive.conversion, "fFeEgG")) {
        return PrintReal(directive, *real);
    }
    if (IsOneOf(directive.conversion, "diuxXo")) {
        if (const auto* integer = std::get_if<std::int64_t>(&content)) {
            return PrintInteger(directive, *integer);
        }
        if (const auto* integer = std::get_if<std::uint64_t>(&content)) {
            return PrintInteger(directive, static_cast<long long>(*integer));
        }
    }
    return PrintText(directive, PlainText());
}

format::format(std::string_view pattern)
    : text(pattern), positional(pattern.find("%1%") != std::string_view::npos) {}

format& format::Put(const eValue& value) {
    if (positional) {
        ReplaceNumber(value);
    } else {
        ReplaceDirective(value);
    }
    return *this;
}

format& format::Put(std::string_view value) {
    return Put(eValue{value});
}
format& format::Put(double value) {
    return Put(eValue{value});
}
format& format::Put(std::int64_t value) {
    return Put(eValue{value});
}
format& format::Put(std::uint64_t value) {
    return Put(eValue{value});
}

void format::ReplaceNumber(const eValue& value) {
    const std::string mark = "%" + std::to_string(++lastArgument) + "%";
    const std::string valueText = value.PlainText();
    std::size_t place = text.find(mark);
    while (place != std::string::npos) {
        text.replace(place, mark.size(), valueText);
        place = text.find(mark, place + valueText.size());
    }
}

void format::ReplaceDirective(const eValue& value) {
    std::size_t place = text.find('%', searchPosition);
    while (place != std::string::npos && text.compare(place, 2, "%%") == 0) {
        place = text.find('%', place + 2);
    }
    const eDirective directive = ReadDirective(std::string_view(text).substr(std::min(place, text.size())));
    if (directive.length == 0) {
        return;
    }
    const std::string piece = value.Print(directive);
    text.replace(place, directive.length, piece);
    searchPosition = place + piece.size();
}
