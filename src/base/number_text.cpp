#include "base/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

bool IsDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

// The blanks of the classic conversions.
bool IsBlank(char byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

std::size_t SkipBlanks(std::string_view text) {
    std::size_t index = 0;
    while (index < text.size() && IsBlank(text[index])) {
        ++index;
    }
    return index;
}

std::size_t SkipDigits(std::string_view text, std::size_t index) {
    while (index < text.size() && IsDigit(text[index])) {
        ++index;
    }
    return index;
}

bool IsSign(std::string_view text, std::size_t index) {
    return index < text.size() && (text[index] == '+' || text[index] == '-');
}

// The end of an exponent that begins at index, or index itself if none stands there.
std::size_t SkipExponent(std::string_view text, std::size_t index) {
    if (index >= text.size() || (text[index] != 'e' && text[index] != 'E')) {
        return index;
    }
    const std::size_t digits = IsSign(text, index + 1) ? index + 2 : index + 1;
    const std::size_t end = SkipDigits(text, digits);
    return end > digits ? end : index;
}

// The end of an unsigned decimal number at the start of the text, 0 if none stands there.
std::size_t SkipDecimal(std::string_view text) {
    const std::size_t whole = SkipDigits(text, 0);
    std::size_t end = whole;
    if (end < text.size() && text[end] == '.') {
        end = SkipDigits(text, end + 1);
        if (end == 1) {
            return 0;
        }
    }
    return end == 0 ? 0 : SkipExponent(text, end);
}

// from_chars leaves the value alone when it is out of range: far too big or far too small?
double OutOfRangeReal(std::string_view number) {
    const std::size_t mark = number.find_first_of("eE");
    if (mark != std::string_view::npos) {
        return number.substr(mark).find('-') != std::string_view::npos ? 0.0 : HUGE_VAL;
    }
    // Without an exponent only the digits before the dot can make a number too big.
    return number.find_first_of("123456789") < number.find('.') ? HUGE_VAL : 0.0;
}

double RealOfDecimal(std::string_view number) {
    double value = 0.0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    return error == std::errc::result_out_of_range ? OutOfRangeReal(number) : value;
}

// to_chars writes at least two digits of exponent; a third is put in front of them.
char* WidenExponent(char* begin, char* end) {
    char* mark = end - begin > 4 ? end - 4 : begin;
    if (*mark != 'e') {
        return end;
    }
    char* digits = mark + 2;
    std::copy_backward(digits, end, end + 1);
    *digits = '0';
    return end + 1;
}

constexpr int significantDigits = 6;
constexpr int smallestExponent = -4;  // "%g" writes an exponent below it

// The decimal exponent of a value from 1e-4 up to 1e6.
int CommonExponent(double magnitude) {
    int exponent = smallestExponent;
    for (const double next : {1e-3, 1e-2, 1e-1, 1e0, 1e1, 1e2, 1e3, 1e4, 1e5}) {
        exponent += magnitude >= next ? 1 : 0;
    }
    return exponent;
}

// "00" to "99".
constexpr std::array<char, 200> MakeDigitPairs() {
    std::array<char, 200> pairs{};
    for (std::size_t number = 0; number < 100; ++number) {
        pairs[2 * number] = static_cast<char>('0' + number / 10);
        pairs[2 * number + 1] = static_cast<char>('0' + number % 10);
    }
    return pairs;
}

constexpr std::array<char, 200> digitPairs = MakeDigitPairs();

void WriteSixDigits(char* out, std::uint32_t digits) {
    for (const std::uint32_t pair : {digits / 10000, digits / 100 % 100, digits % 100}) {
        out = std::copy_n(&digitPairs[2 * std::size_t{pair}], 2, out);
    }
}

// Six digits with the dot behind the one of the given exponent, without trailing zeros. Copies are of a fixed
// length, which is cheaper than the right one; what is too much lies behind the end.
char* WriteFixed(char* out, std::uint32_t digits, int exponent) {
    char text[2 * significantDigits] = {};
    WriteSixDigits(text, digits);
    int length = significantDigits;
    while (length > exponent + 1 && length > 1 && text[length - 1] == '0') {
        --length;
    }
    if (exponent < 0) {
        constexpr std::string_view zeros = "0.000";
        std::ranges::copy(zeros, out);
        out += 1 - exponent;
        std::copy_n(text, significantDigits, out);
        return out + length;
    }
    const int whole = exponent + 1;
    std::copy_n(text, significantDigits, out);
    if (length > whole) {
        out[whole] = '.';
        std::copy_n(text + whole, significantDigits, out + whole + 1);
        ++length;
    }
    return out + length;
}

// A number below a hundred, without trailing zeros.
char* WriteTenThousandths(char* out, std::uint32_t number) {
    char text[significantDigits];
    WriteSixDigits(text, number);
    if (text[0] != '0') {
        *out++ = text[0];
    }
    *out++ = text[1];
    int decimals = 4;
    while (decimals > 0 && text[1 + decimals] == '0') {
        --decimals;
    }
    if (decimals > 0) {
        *out++ = '.';
        std::copy_n(text + 2, 4, out);
    }
    return out + decimals;
}

// Nearly all numbers of a scene lie between 1e-4 and 1e6. Multiplied by an exact power of ten their six
// digits stand before the dot, with an error below 1e-9 from the one rounding. Only where that could turn the
// last digit the answer is null, and the exact conversion must do it.
char* WriteCommonReal(char* out, double magnitude) {
    if (!(magnitude >= 1e-4 && magnitude < 999999.0)) {
        return nullptr;
    }
    constexpr double scales[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
    int exponent = CommonExponent(magnitude);
    const double scaled = magnitude * scales[significantDigits - 1 - exponent];
    auto digits = static_cast<std::uint32_t>(scaled);
    const double rest = scaled - digits;
    if (std::abs(rest - 0.5) < 1e-9) {
        return nullptr;
    }
    digits += rest > 0.5 ? 1 : 0;
    if (digits == 1000000) {
        digits = 100000;
        ++exponent;
    }
    return WriteFixed(out, digits, exponent);
}

}  // namespace

char* WriteRealText(char* out, double value) {
    char* const begin = out;
    if (std::signbit(value)) {
        *out++ = '-';
    }
    if (value == 0.0) {
        *out++ = '0';
        return out;
    }
    if (char* end = WriteCommonReal(out, std::abs(value))) {
        return end;
    }
    char* end =
        std::to_chars(begin, begin + numberTextSize, value, std::chars_format::general, significantDigits)
            .ptr;
    return WidenExponent(begin, end);
}

// Below a hundred, four decimals are six digits at most, and the rounded number is nearer to them than to any
// others: they are those of the whole number of ten-thousandths.
char* WriteRoundedText(char* out, float value) {
    const float scaled = value * roundedScale;
    const float magnitude = std::abs(scaled);
    if (!(magnitude < 999999)) {
        return WriteRealText(out, std::copysign(std::floor(magnitude + 0.5F), scaled) / roundedScale);
    }
    if (scaled < 0) {
        *out++ = '-';
    }
    return WriteTenThousandths(out, static_cast<std::uint32_t>(magnitude + 0.5F));
}

char* WriteIntegerText(char* out, std::int64_t value) {
    return std::to_chars(out, out + numberTextSize, value).ptr;
}

char* WriteHexText(char* out, std::uint32_t value) {
    *out++ = '0';
    *out++ = 'x';
    return std::to_chars(out, out + numberTextSize - 2, value, 16).ptr;
}

std::string RealText(double value) {
    char text[numberTextSize];
    return {text, WriteRealText(text, value)};
}

std::string IntegerText(std::int64_t value) {
    char text[numberTextSize];
    return {text, WriteIntegerText(text, value)};
}

std::int32_t ReadInteger(std::string_view text) {
    using eLimits = std::numeric_limits<std::int32_t>;
    std::size_t index = SkipBlanks(text);
    const bool negative = index < text.size() && text[index] == '-';
    index += IsSign(text, index) ? 1 : 0;
    std::int64_t value = 0;
    for (; index < text.size() && IsDigit(text[index]); ++index) {
        value = std::min<std::int64_t>(value * 10 + (text[index] - '0'), std::int64_t{eLimits::max()} + 1);
    }
    value = negative ? -value : std::min<std::int64_t>(value, eLimits::max());
    return static_cast<std::int32_t>(value);
}

double ReadReal(std::string_view text, std::size_t* used) {
    const std::size_t begin = SkipBlanks(text);
    const std::size_t digits = IsSign(text, begin) ? begin + 1 : begin;
    const std::size_t length = SkipDecimal(text.substr(digits));
    if (used != nullptr) {
        *used = length == 0 ? 0 : digits + length;
    }
    const double value = length == 0 ? 0.0 : RealOfDecimal(text.substr(digits, length));
    return length != 0 && text[begin] == '-' ? -value : value;
}
