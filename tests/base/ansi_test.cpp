#include "base/ansi.h"

#include <gtest/gtest.h>

namespace {

TEST(Ansi, ConvertsLiteralsAtCompileTime) {
    static_assert(std::string_view("Ошибка №1"_ansi) == "\xCE\xF8\xE8\xE1\xEA\xE0 \xB9\x31");
    EXPECT_EQ(ToUtf8("Ё—«»"_ansi), "Ё—«»");
}

// Would catch: a name that is cut, or an offset that counts characters instead of bytes.
TEST(Ansi, TellsWhereUtf8CannotBeHeld) {
    EXPECT_TRUE(FromUtf8("Танк").IsExact());
    EXPECT_EQ(FromUtf8("Танк").text, "Танк"_ansi);
    const eFromUtf8 foreign = FromUtf8("ж日本\xFFz");
    EXPECT_EQ(foreign.text, "ж___z"_ansi);
    EXPECT_EQ(foreign.badOffset, 2u);
}

// Would catch: bytes compared as signed, which puts Cyrillic before Latin.
TEST(Ansi, ComparesWithoutCase) {
    EXPECT_TRUE(EqualNoCase("Ёж Box"_ansi, "ёЖ bOX"_ansi));
    EXPECT_FALSE(EqualNoAsciiCase("Ёж"_ansi, "ёж"_ansi));
    EXPECT_TRUE(EqualNoAsciiCase("IK_Limit", "ik_limit"));
    EXPECT_LT(CompareNoCase("ZEBRA", "арбуз"_ansi), 0);
    EXPECT_LT(CompareNoCase("box", "BOX1"), 0);
    EXPECT_GT(CompareNoCase("box_b", "BOX_A"), 0);
    EXPECT_EQ(LowerAnsi("ТАНК T"_ansi), "танк t"_ansi);
    EXPECT_EQ(LowerAscii("ТАНК T"_ansi), "ТАНК t"_ansi);
}

}  // namespace
