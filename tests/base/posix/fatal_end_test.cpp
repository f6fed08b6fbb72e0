// The end of a process whose boxes are lines of text.
#include <gtest/gtest.h>

#include <csignal>

#include "base/diagnostics.h"
#include "base/event_bus.h"

namespace {

// Would catch: a fatal error with the status of success, or one that returns to its caller.
TEST(FailDeathTest, ShowsTheReportAndEndsWithOne) {
    EXPECT_EXIT(
        {
            xDebug::SetLogSink([](const std::string& record) { std::fputs(record.c_str(), stderr); });
            Fail("io/stream_file.cpp", 12, "x - open error!");
        },
        testing::ExitedWithCode(1),
        "=+ Handled exception =+\nx - open error! \\(io/stream_file.cpp, 12\\)\n-+\n=+\n"
        "Exception: x - open error! \\(io/stream_file.cpp, 12\\)\n");
}

TEST(FailDeathTest, SendsTheLastMessage) {
    class eLastWords : public eEventable {
    public:
        void OnMessage(int) override { std::fputs("[last words]", stderr); }
    };
    EXPECT_EXIT(
        {
            eLastWords words;
            eEventBus::Process().Subscribe(messageFatalExit, words);
            Fail("a.cpp", 1, "x");
        },
        testing::ExitedWithCode(1), "\\[last words\\]");
}

TEST(FailDeathTest, BecomesOfWarningsWhenTheSettingSaysSo) {
    EXPECT_EXIT(
        {
            *xDebug::FindDebugSetting("dbg_warningErrorLevel") = 0;
            Warn("a.cpp", 1, "x");
            std::_Exit(0);
        },
        testing::ExitedWithCode(1), "");
    EXPECT_EQ(xDebug::FindDebugSetting("dbg_other"), nullptr);
}

TEST(ExceptionReportDeathTest, ShowsTheNameAndWhereToLook) {
    EXPECT_EXIT(
        {
            xDebug::InstallExceptionReport();
            std::raise(SIGFPE);
        },
        testing::ExitedWithCode(1),
        "=+ Unhandled exception =+\nFLT_INVALID_OPERATION\nException: FLT_INVALID_OPERATION\n\nSee "
        "console.log");
}

}  // namespace
