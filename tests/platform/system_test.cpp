// What the process asks of the operating system about itself.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "platform/exception_filter.h"
#include "platform/local_time.h"
#include "platform/user.h"
#include "support/environment.h"

namespace {

// The text with one letter or digit for all of its kind.
std::string Shape(std::string text) {
    for (char& c : text) {
        c = c >= '0' && c <= '9' ? '0' : c >= 'a' && c <= 'z' ? 'a' : c >= 'A' && c <= 'Z' ? 'A' : c;
    }
    return text;
}

// Would catch: a date line that follows the time zone or the locale of the build machine.
TEST(ClassicTime, IsFixedByTheEnvironment) {
    support::SetEnvironment("TZ", "Asia/Tokyo");
    support::SetEnvironment("SOURCE_DATE_EPOCH", "1795062558");
    EXPECT_EQ(platform::ClassicTime(), "Thu Nov 19 04:29:18 2026");
    support::SetEnvironment("SOURCE_DATE_EPOCH", "1793664000");
    EXPECT_EQ(platform::ClassicTime(), "Tue Nov  3 00:00:00 2026");
    support::SetEnvironment("SOURCE_DATE_EPOCH", "soon");
    const auto form = testing::AnyOf("Aaa Aaa 00 00:00:00 0000", "Aaa Aaa  0 00:00:00 0000");
    EXPECT_THAT(Shape(platform::ClassicTime()), form);
    support::SetEnvironment("SOURCE_DATE_EPOCH", "");
    support::SetEnvironment("TZ", "");
    EXPECT_THAT(Shape(platform::ClassicTime()), form);
}

TEST(User, HasAName) {
    EXPECT_FALSE(platform::AccountName().empty());
    EXPECT_FALSE(platform::NetworkPath("/a/file"));
}

TEST(ExceptionName, KnowsTheCodes) {
    EXPECT_EQ(platform::ExceptionName(0xC0000094), "INT_DIVIDE_BY_ZERO");
    EXPECT_EQ(platform::ExceptionName(0xC00000FD), "STACK_OVERFLOW");
    EXPECT_EQ(platform::ExceptionName(1), "");
}

}  // namespace
