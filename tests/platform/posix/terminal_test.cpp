#include "platform/terminal.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {

// Would catch an interrupt that kills the run, one that is forgotten before the next poll, and a second one
// that does not end the process.
TEST(Interrupts, TheFirstIsRememberedAndTheSecondEndsTheProcess) {
    platform::CatchInterrupts();
    EXPECT_FALSE(platform::WasInterrupted());
    std::raise(SIGINT);
    EXPECT_TRUE(platform::WasInterrupted());
    EXPECT_TRUE(platform::WasInterrupted());
    EXPECT_EXIT(std::raise(SIGINT), ::testing::ExitedWithCode(130), "");
    platform::CatchInterrupts();
    EXPECT_FALSE(platform::WasInterrupted());
    platform::ReleaseInterrupts();
    EXPECT_EXIT(std::raise(SIGINT), ::testing::KilledBySignal(SIGINT), "");
}

}  // namespace
