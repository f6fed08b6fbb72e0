#include "base/numeric_locale.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

#include "base/format.h"
#include "base/number_text.h"
#include "support/environment.h"
#include "support/temp_folder.h"

namespace {

// In a process whose numbers have a comma, as a Russian system sets it up.
class CommaLocale : public testing::Test {
protected:
    void SetUp() override {
        const std::string made = folder / "ru_RU.UTF-8";
        const std::string command = "localedef -i ru_RU -f UTF-8 '" + made + "' > /dev/null 2>&1";
        if (std::system(command.c_str()) != 0 && !folder.Has("ru_RU.UTF-8")) {
            GTEST_SKIP() << "this system can't make locales";
        }
        support::SetEnvironment("LOCPATH", folder.Path().c_str());
        ASSERT_NE(std::setlocale(LC_NUMERIC, "ru_RU.UTF-8"), nullptr);
        ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    }
    void TearDown() override {
        std::setlocale(LC_NUMERIC, "C");
        ::unsetenv("LOCPATH");
    }

    support::eTempFolder folder;
};

// Would catch: a run that leaves the host's process with another decimal separator.
TEST_F(CommaLocale, ComesBackAfterTheRun) {
    {
        const eNumericLocale guard;
        EXPECT_STREQ(std::localeconv()->decimal_point, ".");
    }
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
}

// Would catch: a comma in a message or a file, and a number that ends at its dot.
TEST_F(CommaLocale, StaysOutOfTexts) {
    EXPECT_EQ((format("%.2f %g %5.1f %e") % 1.5 % 0.25 % -2.75 % 1.5).Text(), "1.50 0.25  -2.8 1.500000e+00");
    EXPECT_EQ((format("%1%") % 0.5).Text(), "0.5");
    EXPECT_EQ(RealText(1234567.5), "1.23457e+006");
    EXPECT_EQ(ReadReal("-1.25e1x"), -12.5);
}

}  // namespace
