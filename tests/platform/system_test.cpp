// What the process asks of the operating system about itself.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <csignal>
#include <cstdio>
#include <string>

#include "platform/exception_filter.h"
#include "platform/local_time.h"
#include "platform/message_box.h"
#include "platform/user.h"

namespace {

// Would catch: a date line that follows the time zone or the locale of the build machine.
TEST(ClassicTime, IsFixedByTheEnvironment) {
    ::setenv("TZ", "Asia/Tokyo", 1);
    ::setenv("SOURCE_DATE_EPOCH", "1795062558", 1);
    EXPECT_EQ(platform::ClassicTime(), "Thu Nov 19 04:29:18 2026");
    ::setenv("SOURCE_DATE_EPOCH", "1793664000", 1);
    EXPECT_EQ(platform::ClassicTime(), "Tue Nov  3 00:00:00 2026");
    ::setenv("SOURCE_DATE_EPOCH", "soon", 1);
    const auto form =
        testing::MatchesRegex("(Mon|Tue|Wed|Thu|Fri|Sat|Sun) [A-Z][a-z]{2} [ 123][0-9] [0-9:]{8} 2[0-9]{3}");
    EXPECT_THAT(platform::ClassicTime(), form);
    ::unsetenv("SOURCE_DATE_EPOCH");
    ::unsetenv("TZ");
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

void PrintName(const char* name) {
    std::fprintf(stderr, "[%s]", name);
}

[[noreturn]] void RaiseUnderFilter(int signal) {
    platform::InstallExceptionFilter(PrintName);
    std::raise(signal);
    std::_Exit(0);
}

int DiveDeep(int depth) {
    volatile char room[4096];
    room[0] = static_cast<char>(depth);
    return depth < 0 ? 0 : DiveDeep(depth + 1) + room[0];
}

// Would catch: a crash that leaves without a word, or with the status of success.
TEST(ExceptionFilterDeathTest, NamesTheExceptionAndEndsWithOne) {
    EXPECT_EXIT(RaiseUnderFilter(SIGSEGV), testing::ExitedWithCode(1), "\\[ACCESS_VIOLATION\\]");
    EXPECT_EXIT(RaiseUnderFilter(SIGILL), testing::ExitedWithCode(1), "\\[ILLEGAL_INSTRUCTION\\]");
    EXPECT_EXIT(RaiseUnderFilter(SIGTRAP), testing::ExitedWithCode(1), "\\[BREAKPOINT\\]");
    EXPECT_EXIT(
        {
            platform::InstallExceptionFilter(PrintName);
            std::_Exit(DiveDeep(0));
        },
        testing::ExitedWithCode(1), "\\[STACK_OVERFLOW\\]");
}

TEST(ExceptionFilterDeathTest, PutsThePreviousFilterBack) {
    EXPECT_EXIT(
        {
            std::signal(SIGILL, [](int) { std::_Exit(7); });
            platform::InstallExceptionFilter(PrintName);
            platform::RestoreExceptionFilter();
            std::raise(SIGILL);
        },
        testing::ExitedWithCode(7), "");
}

// Would catch: a handler stuck on a lock that keeps the build farm waiting for ever.
TEST(ExceptionFilterDeathTest, EndsAHangingHandler) {
    EXPECT_EXIT(
        {
            platform::InstallExceptionFilter([](const char*) {
                for (;;) {
                }
            });
            std::raise(SIGSEGV);
        },
        testing::ExitedWithCode(1), "");
}

TEST(ExceptionName, KnowsTheCodes) {
    EXPECT_EQ(platform::ExceptionName(0xC0000094), "INT_DIVIDE_BY_ZERO");
    EXPECT_EQ(platform::ExceptionName(0xC00000FD), "STACK_OVERFLOW");
    EXPECT_EQ(platform::ExceptionName(1), "");
}

}  // namespace
