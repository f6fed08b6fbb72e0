// Numbers as text and back, whatever the process's locale says.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Room enough for any number that the functions below write.
inline constexpr std::size_t numberTextSize = 32;

// The functions write from the given place on, without a terminator, and return the end of what they wrote.

// As printf's "%g" with six significant digits, but with at least three digits in the exponent: 1e+006.
// Infinities and NaN are "inf", "-inf", "nan", "-nan".
char* WriteRealText(char* out, double value);
// The same of the number rounded to four decimals, half away from 0; faster. A number that is no more finite
// when it is multiplied by roundedScale is written as what the product is.
inline constexpr float roundedScale = 10000;
char* WriteRoundedText(char* out, float value);
char* WriteIntegerText(char* out, std::int64_t value);
// "0x" and lower-case digits without leading zeros.
char* WriteHexText(char* out, std::uint32_t value);

std::string RealText(double value);
std::string IntegerText(std::int64_t value);

// As the classic atoi: blanks, a sign, digits, up to the first byte that does not belong; 0 without digits.
// A value out of range gives the nearest end of the range.
std::int32_t ReadInteger(std::string_view text);
// As the classic atof in the C locale: decimal notation with an optional exponent, 0 if there is no number.
// Out of range gives an infinity or 0. used, if not null, gets the bytes that belong to the number, 0 for
// none.
double ReadReal(std::string_view text, std::size_t* used = nullptr);
