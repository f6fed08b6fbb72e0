#include "base/format.h"

#include <gtest/gtest.h>

#include <clocale>

namespace {

TEST(Format, PutsNumberedArgumentsWhereverTheyAreNamed) {
    EXPECT_EQ((format("%2% of %1%, %1%!") % 3 % "x").Text(), "x of 3, 3!");
    EXPECT_EQ((format("only %1%") % 1.5f % "beyond").Text(), "only 1.5");
    EXPECT_EQ((format("%1%%%2%") % "a" % "b").Text(), "a%b");
    EXPECT_EQ((format("%1%") % "in %1% itself").Text(), "in %1% itself");
}

// Would catch: an argument that takes the place of a doubled percent sign, or crashes on the wrong type.
TEST(Format, TakesOneDirectiveAfterAnother) {
    EXPECT_EQ((format("'%s' has %d bones") % "tank" % 3).Text(), "'tank' has 3 bones");
    EXPECT_EQ((format("100%% of %s") % "it").Text(), "100%% of it");
    EXPECT_EQ((format("%5.2f|%-4d|%04x|%g") % 1.005 % 7 % 255u % 1e6).Text(), " 1.00|7   |00ff|1e+006");
    EXPECT_EQ((format("%s %d") % 42 % "text").Text(), "42 text");
    EXPECT_EQ((format("%s") % "50% done: %d" % 5).Text(), "50% done: %d");
    EXPECT_EQ((format("no place") % 1).Text(), "no place");
    EXPECT_EQ((format("cut %") % 1).Text(), "cut %");
    EXPECT_EQ((format("%n") % 1).Text(), "1");
    EXPECT_EQ((format("%9999s") % "wide").Text().size(), 4096u);
}

// Would catch: a decimal comma from the user's regional settings.
TEST(Format, KeepsTheDotOnEveryLocale) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    for (const char* locale : {"de_DE.UTF-8", "ru_RU.UTF-8", "C"}) {
        std::setlocale(LC_NUMERIC, locale);
        EXPECT_EQ((format("%.2f %1.1e") % 1.5 % 2.5).Text(), "1.50 2.5e+00");
        EXPECT_EQ((format("%1%") % 0.5).Text(), "0.5");
    }
    std::setlocale(LC_NUMERIC, before.c_str());
}

}  // namespace
