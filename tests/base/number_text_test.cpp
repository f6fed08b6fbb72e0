// Numbers as text: the same digits as the C library's, on any locale.
#include "base/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace {

// The plain way: the C library, its exponent brought to three digits.
std::string PrintedReal(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%g", value);
    std::string result = text;
    const std::size_t mark = result.find('e');
    if (mark != std::string::npos && result.size() == mark + 4) {
        result.insert(mark + 2, 1, '0');
    }
    return result;
}

TEST(RealText, HasSixDigitsAndThreeInTheExponent) {
    EXPECT_EQ(RealText(0), "0");
    EXPECT_EQ(RealText(-0.0), "-0");
    EXPECT_EQ(RealText(double{0.1f}), "0.1");
    EXPECT_EQ(RealText(1.5), "1.5");
    EXPECT_EQ(RealText(-0.25), "-0.25");
    EXPECT_EQ(RealText(100000), "100000");
    EXPECT_EQ(RealText(999999.5), "1e+006");
    EXPECT_EQ(RealText(1234567), "1.23457e+006");
    EXPECT_EQ(RealText(0.00001), "1e-005");
    EXPECT_EQ(RealText(0.0000999999999), "0.0001");
    EXPECT_EQ(RealText(-1.5e-300), "-1.5e-300");
}

// Would catch: a fast path that rounds ties, carries or edges of its range otherwise than the exact one.
TEST(RealText, IsThatOfTheLibraryForManyValues) {
    std::mt19937 random(1);
    for (int round = 0; round < 300000; ++round) {
        const auto any = double{std::bit_cast<float>(static_cast<std::uint32_t>(random()))};
        const double scene =
            std::ldexp(static_cast<double>(random() % 2000001) - 1000000, -static_cast<int>(random() % 24));
        const double tie = (static_cast<double>(random() % 1000000) + 0.5) / std::pow(10.0, random() % 10);
        const double nearly = std::nextafter(tie, round % 2 == 0 ? 0.0 : 1e9);
        for (const double value : {any, scene, tie, nearly}) {
            if (!std::isnan(value)) {
                ASSERT_EQ(RealText(value), PrintedReal(value)) << std::hexfloat << value;
            }
        }
    }
    for (double power = 1e-7; power < 1e9; power *= 10) {
        for (const double value :
             {power, std::nextafter(power, 0.0), std::nextafter(power, 1e300), power * 0.9999995}) {
            EXPECT_EQ(RealText(value), PrintedReal(value)) << std::hexfloat << value;
        }
    }
}

// Would catch: a sign, a zero or a dot too many, and the short way taken where it ends.
TEST(RoundedText, IsThatOfTheRoundedNumber) {
    const auto rounded = [](float value) {
        char text[numberTextSize];
        return std::string(text, WriteRoundedText(text, value));
    };
    for (int tick = -1010000; tick < 1010000; tick += 7) {
        const float value = static_cast<float>(tick) / 10000;
        ASSERT_EQ(rounded(value), RealText(double{value})) << tick;
        ASSERT_EQ(rounded(value + (value < 0 ? -4e-5F : 4e-5F)), rounded(value)) << tick;
    }
    EXPECT_EQ(rounded(0.00005F), "0.0001");
    EXPECT_EQ(rounded(-0.00004F), "-0");
    EXPECT_EQ(rounded(-0.0F), "0");
    EXPECT_EQ(rounded(1e20F), "1e+020");
}

TEST(IntegerText, HandlesTheEnds) {
    EXPECT_EQ(IntegerText(std::numeric_limits<std::int32_t>::min()), "-2147483648");
    char text[numberTextSize];
    EXPECT_EQ(std::string(text, WriteHexText(text, 0xFFFFFFFFu)), "0xffffffff");
    EXPECT_EQ(std::string(text, WriteHexText(text, 0)), "0x0");
}

TEST(ReadInteger, ReadsAsTheClassicConversion) {
    EXPECT_EQ(ReadInteger(" \t-12x"), -12);
    EXPECT_EQ(ReadInteger("+7.9"), 7);
    EXPECT_EQ(ReadInteger("x"), 0);
    EXPECT_EQ(ReadInteger(""), 0);
    EXPECT_EQ(ReadInteger("- 5"), 0);
    EXPECT_EQ(ReadInteger("0x10"), 0);
    EXPECT_EQ(ReadInteger("99999999999999999999"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(ReadInteger("-99999999999999999999"), std::numeric_limits<std::int32_t>::min());
}

// Would catch: a value lost to a sign, a lone dot, a broken exponent, or words that other libraries read.
TEST(ReadReal, ReadsAsTheClassicConversion) {
    EXPECT_EQ(ReadReal(" -1.5e2abc"), -150.0);
    EXPECT_EQ(ReadReal("+.5"), 0.5);
    EXPECT_EQ(ReadReal("5."), 5.0);
    EXPECT_EQ(ReadReal("2e"), 2.0);
    EXPECT_EQ(ReadReal("2e+"), 2.0);
    EXPECT_EQ(ReadReal("1,5"), 1.0);
    EXPECT_EQ(ReadReal("0x10"), 0.0);
    EXPECT_EQ(ReadReal("inf"), 0.0);
    EXPECT_EQ(ReadReal("nan"), 0.0);
    EXPECT_EQ(ReadReal("."), 0.0);
    EXPECT_EQ(ReadReal("-"), 0.0);
    EXPECT_TRUE(std::signbit(ReadReal("-0")));
    EXPECT_EQ(ReadReal("1e999"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(ReadReal("-1e999"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(ReadReal("1e-999"), 0.0);
    EXPECT_EQ(ReadReal(std::string(400, '9')), std::numeric_limits<double>::infinity());
    EXPECT_EQ(ReadReal("0." + std::string(400, '0') + "1"), 0.0);
    std::size_t used = 99;
    ReadReal(" 1.25e3,4", &used);
    EXPECT_EQ(used, 7u);
    ReadReal("  x", &used);
    EXPECT_EQ(used, 0u);
}

}  // namespace
