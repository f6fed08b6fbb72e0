#include "base/numeric_locale.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace {

// Would catch: a run that leaves the host's process with another decimal separator.
TEST(NumericLocale, ComesBack) {
    const char* regional = std::setlocale(LC_NUMERIC, "C.UTF-8");
    const std::string before = regional != nullptr ? regional : "C";
    {
        const eNumericLocale guard;
        EXPECT_STREQ(std::localeconv()->decimal_point, ".");
    }
    EXPECT_EQ(std::string(std::setlocale(LC_NUMERIC, nullptr)), before);
    std::setlocale(LC_NUMERIC, "C");
}

}  // namespace
