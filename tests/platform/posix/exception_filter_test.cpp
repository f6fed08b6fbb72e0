#include "platform/exception_filter.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>

namespace {

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

}  // namespace
