// What the process asks of the operating system about itself.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "platform/exception_filter.h"
#include "platform/local_time.h"
#include "platform/message_box.h"
#include "platform/user.h"
#include "support/environment.h"

namespace {

// Would catch: a date line that follows the time zone or the locale of the build machine.
TEST(ClassicTime, IsFixedByTheEnvironment) {
    support::SetEnvironment("TZ", "Asia/Tokyo");
    support::SetEnvironment("SOURCE_DATE_EPOCH", "1795062558");
    EXPECT_EQ(platform::ClassicTime(), "Thu Nov 19 04:29:18 2026");
    support::SetEnvironment("SOURCE_DATE_EPOCH", "1793664000");
    EXPECT_EQ(platform::ClassicTime(), "Tue Nov  3 00:00:00 2026");
    support::SetEnvironment("SOURCE_DATE_EPOCH", "soon");
    const auto form =
        testing::MatchesRegex("(Mon|Tue|Wed|Thu|Fri|Sat|Sun) [A-Z][a-z]{2} [ 123][0-9] [0-9:]{8} 2[0-9]{3}");
    EXPECT_THAT(platform::ClassicTime(), form);
    support::SetEnvironment("SOURCE_DATE_EPOCH", "");
    support::SetEnvironment("TZ", "");
    EXPECT_THAT(platform::ClassicTime(), form);
}

TEST(User, HasAName) {
    EXPECT_FALSE(platform::AccountName().empty());
    EXPECT_FALSE(platform::NetworkPath("/a/file"));
}

TEST(MessageBox, GoesToTheSinkThatWasSetLast) {
    std::string shown;
    auto previous = platform::SetMessageBoxSink([&](const platform::eMessageBox& box) {
        shown = box.text;
        return platform::eBoxAnswer::Retry;
    });
    platform::eMessageBox box;
    box.text = "text";
    EXPECT_EQ(platform::ShowMessageBox(box), platform::eBoxAnswer::Retry);
    EXPECT_EQ(shown, "text");
    platform::SetMessageBoxSink(previous);
}

TEST(ExceptionName, KnowsTheCodes) {
    EXPECT_EQ(platform::ExceptionName(0xC0000094), "INT_DIVIDE_BY_ZERO");
    EXPECT_EQ(platform::ExceptionName(0xC00000FD), "STACK_OVERFLOW");
    EXPECT_EQ(platform::ExceptionName(1), "");
}

}  // namespace
