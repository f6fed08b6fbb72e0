// How a program of the system ends that can't go on: a box over everything, and exit code 1.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desktop/win32/child_program.h"

namespace {

struct eFault {
    const char* argument;
    const char* text;
};

class Fault : public testing::TestWithParam<eFault> {};

TEST_P(Fault, IsToldInABoxAndEndsWithOne) {
    const desktop::eChildProgram program("tests/fault_program", {GetParam().argument});
    HWND box = program.WaitForWindow("Exception");
    ASSERT_NE(box, nullptr);
    EXPECT_THAT(desktop::TextsIn(box), testing::Contains(GetParam().text));
    desktop::Press(desktop::SoleButton(box));
    EXPECT_EQ(program.WaitForEnd(), 1);
}

INSTANTIATE_TEST_SUITE_P(All, Fault,
                         testing::Values(eFault{"fail", "x - open error! (io/stream_file.cpp, 12)\n"},
                                         eFault{"crash", "ACCESS_VIOLATION\n\nSee console.log for details."},
                                         eFault{"dive", "STACK_OVERFLOW\n\nSee console.log for details."}));

}  // namespace
