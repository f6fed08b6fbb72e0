// The tokens of SDL text, byte by byte.
#include "io/sdl/sdl_parser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/ansi.h"
#include "base/check_point.h"

namespace {

using namespace xIo::xSdl;
using testing::ElementsAre;

// "TYPE:TEXT" of each token up to the end.
std::vector<std::string> Tokens(const std::string& text) {
    eParser parser("text", text);
    std::vector<std::string> tokens;
    while (parser.Next().type != kTokenEnd) {
        tokens.push_back(std::to_string(parser.Current().type) + ":" + std::string(parser.Current().text));
    }
    return tokens;
}

TEST(SdlParser, KnowsEveryToken) {
    EXPECT_THAT(Tokens("{bone _a1 \"x y\" 'z'}"),
                ElementsAre("4:{", "1:bone", "1:_a1", "2:x y", "3:z", "5:}"));
    EXPECT_THAT(Tokens("(%1 %name%)"), ElementsAre("7:(", "13:%1", "13:%name", "13:%", "8:)"));
    EXPECT_THAT(
        Tokens("+ - += -= * *= / = == < <= > >= ! != & && |="),
        ElementsAre("12:+", "12:-", "12:+=", "12:-=", "12:*", "12:*=", "12:/", "12:=", "12:==", "12:<",
                    "12:<=", "12:>", "12:>=", "12:!", "12:!=", "12:&", "12:&", "12:&", "12:|", "12:="));
    EXPECT_THAT(Tokens("{#tag-1+a b} {# c}"), ElementsAre("4:{#tag-1+a", "1:b", "5:}", "4:{#", "1:c", "5:}"));
    EXPECT_THAT(Tokens("a;b}\nc ;end"), ElementsAre("1:a", "1:c"));
    EXPECT_THAT(Tokens("a,\x98["), ElementsAre("1:a", "-1:,", "-1:\x98", "-1:["));
}

// Would catch: a sign that ends up as an operator, a hexadecimal number that ends at its x.
TEST(SdlParser, ReadsNumbers) {
    EXPECT_THAT(Tokens("0 -5 +7 1.5 -.5 1e+006 2E-3 0x1F 0xg 1.2.3 -0x1 5x"),
                ElementsAre("10:0", "10:-5", "10:+7", "9:1.5", "12:-", "-1:.", "10:5", "9:1e+006", "9:2E-3",
                            "10:0x1F", "10:0x", "1:g", "9:1.2.3", "10:-0", "1:x1", "10:5", "1:x"));
    struct {
        const char* text;
        float real;
        std::int32_t integer;
    } const cases[] = {{"12", 12, 12},         {"-2147483648", -2147483648.0F, INT32_MIN},
                       {"1.5", 1.5F, 1},       {"1e+002", 100, 1},
                       {"0xffffffff", -1, -1}, {"0x10", 16, 16},
                       {"1.2.3", 1.2F, 1}};
    for (const auto& entry : cases) {
        eParser parser("text", entry.text);
        EXPECT_EQ(parser.Next().real, entry.real) << entry.text;
        EXPECT_EQ(parser.Current().integer, entry.integer) << entry.text;
    }
}

// Would catch: a string that runs on to the next line and swallows the rest of the file.
TEST(SdlParser, EndsStringsAtTheirLine) {
    EXPECT_THAT(Tokens("\"a\\\"b\" 'it\\'s' \"\""), ElementsAre("2:a\\\"b", "3:it\\'s", "2:"));
    EXPECT_THAT(Tokens("\"a\nb"), ElementsAre("-1:\"a", "1:b"));
    EXPECT_THAT(Tokens("'a\\\r\nb"), ElementsAre("-1:'a\\", "1:b"));
    EXPECT_THAT(Tokens("\"never"), ElementsAre("-1:\"never"));
    EXPECT_THAT(Tokens("\"a\\"), ElementsAre("-1:\"a\\"));
}

TEST(SdlParser, PutsOneTokenBack) {
    eParser parser("text", "a b");
    parser.Next();
    parser.Unget();
    EXPECT_EQ(parser.Next().text, "a");
    EXPECT_EQ(parser.Next().text, "b");
    EXPECT_EQ(parser.Next().type, kTokenEnd);
    EXPECT_EQ(parser.Next().type, kTokenEnd);
}

// Would catch: a report that names another line than the one at fault.
TEST(SdlParser, ShowsItsPlaceToReports) {
    eParser parser("/a.mdl", "one\r\ntwo\r\nthree\r\nfour 4\r\nfive\r\nsix\r\nseven");
    while (parser.Next().text != "4") {
    }
    EXPECT_EQ(xDebug::xCheckPoint::StackText(), "> (/a.mdl)\n");
    EXPECT_EQ(xDebug::xCheckPoint::InnermostLocation(), ", 4");
    EXPECT_EQ(parser.Detail(),
              "2:\ttwo\n3:\tthree\n4:\tfour \xAB"
              "4\n5:\tfive\n6:\tsix\n");
    eParser lateParser("define 'x'", std::string(1000, ' ').append("here\n"), 7);
    lateParser.Next();
    EXPECT_EQ(lateParser.Detail(), "7:\t" + std::string(100, ' ') + "\xABhere\n8:\t\n");
}

}  // namespace
