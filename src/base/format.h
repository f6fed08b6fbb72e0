// Text with placeholders: format("%1% of %2%") % 3 % name, or format("%s: %d") % name % 3.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

class format {
public:
    // With "%1%" in the text, each value replaces every occurrence of its own number. Otherwise each value
    // takes the next printf directive ("%%" is none and stays); a directive that does not fit the value's
    // type writes the value's plain text. A value without a place is ignored.
    explicit format(std::string_view text);

    format& operator%(std::string_view value) { return Put(value); }
    format& operator%(const char* value) { return Put(std::string_view(value != nullptr ? value : "")); }
    format& operator%(const std::string& value) { return Put(std::string_view(value)); }
    format& operator%(std::floating_point auto value) { return Put(static_cast<double>(value)); }
    format& operator%(std::signed_integral auto value) { return Put(static_cast<std::int64_t>(value)); }
    format& operator%(std::unsigned_integral auto value) { return Put(static_cast<std::uint64_t>(value)); }

    const std::string& Text() const { return text; }

private:
    struct eValue;
    format& Put(std::string_view value);
    format& Put(double value);
    format& Put(std::int64_t value);
    format& Put(std::uint64_t value);
    format& Put(const eValue& value);
    void ReplaceNumber(const eValue& value);
    void ReplaceDirective(const eValue& value);

    std::string text;
    bool positional;
    int lastArgument = 0;
    std::size_t searchPosition = 0;
};
