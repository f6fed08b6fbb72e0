#include "platform/code_page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/path_text.h"

namespace {

std::string AllBytes() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

// Would catch: a wrong or doubled entry of the table.
TEST(CodePage, BringsEveryByteThroughUtf8AndBack) {
    EXPECT_EQ(platform::AnsiFromUtf8(platform::Utf8FromAnsi(AllBytes())), AllBytes());
    EXPECT_EQ(platform::Utf8FromAnsi("\xCE\xF8\xE8\xE1\xEA\xE0 \xB9\x88"), "Ошибка №€");
}

TEST(CodePage, RefusesWhatItCannotHold) {
    for (const char* text :
         {"日", "é", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE0\x80\xAF", "\x80"}) {
        EXPECT_FALSE(platform::AnsiFromUtf8(text)) << text;
    }
}

// Would catch: an escape that changes with the letter case or splits a path, one that smuggles a character of
// the page in, and bytes that only look like one.
TEST(CodePage, EscapesWhatPathsHaveBeyondIt) {
    const std::string path = "/Łódź/資源/😀/Ё\u0098";
    const std::optional<std::string> text = platform::PathTextFromUtf8(path);
    ASSERT_TRUE(text);
    EXPECT_EQ(platform::Utf8FromAnsi(*text), path);
    EXPECT_EQ(std::ranges::count(*text, '/'), 4);
    std::string lower = *text;
    std::ranges::transform(lower, lower.begin(), platform::LowerAnsiByte);
    EXPECT_EQ(platform::Utf8FromAnsi(lower), "/Łódź/資源/😀/ё\u0098");
    EXPECT_TRUE(platform::HasEscape(*text));
    for (const std::string plain : {"\x98"
                                    "001f",
                                    "\x98"
                                    "00wd",
                                    "\x98"
                                    "00a",
                                    "\x98"}) {
        EXPECT_FALSE(platform::HasEscape(plain));
        EXPECT_EQ(platform::AnsiFromUtf8(platform::Utf8FromAnsi(plain)), plain);
    }
    EXPECT_FALSE(platform::PathTextFromUtf8("/\xC3"));
}

// Would catch: letters outside the main row of the alphabet that keep their case.
TEST(CodePage, LowersAllLettersAndNothingElse) {
    const std::string upper = *platform::AnsiFromUtf8("AZАЯЁЂЃЉЊЌЋЏЎЈҐЄЇІЅ");
    const std::string lower = *platform::AnsiFromUtf8("azаяёђѓљњќћџўјґєїіѕ");
    for (std::size_t index = 0; index < upper.size(); ++index) {
        EXPECT_EQ(platform::LowerAnsiByte(upper[index]), lower[index]) << index;
        EXPECT_EQ(platform::LowerAnsiByte(lower[index]), lower[index]) << index;
    }
    int changed = 0;
    for (const char byte : AllBytes()) {
        changed += platform::LowerAnsiByte(byte) != byte ? 1 : 0;
    }
    EXPECT_EQ(changed, 26 + 32 + 15);
}

}  // namespace
