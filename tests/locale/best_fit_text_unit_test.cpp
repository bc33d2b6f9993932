// A locale object when memory runs out.
#include <gtest/gtest.h>

#include "genlocale.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/reported_failures.h"
#include "tests/support/temporary_file.h"

namespace {

// Everything that an application does with a locale, with each single allocation failing in turn.
TEST(LocaleMemory, FailedAllocationsAreReportedOnce) {
    const TemporaryFile file(
        "[s]\nDateSeparator=-\nShortDateFormat=D/M/YY\n24HourTimeFormat=1\nEra1=R,2019\n");
    CLCLocale().SetLocale("ja_JP");  // its facts are there
    bool failed = true;
    int passing = 0;
    for (; failed; ++passing) {
        ASSERT_LT(passing, 2000);
        const ReportedFailures failures;
        CGNString section("s"), text("1.5"), name("ja_JP");
        {
            const AllocationGate gate(passing, 1);
            CLCLocale locale;
            locale.SetLocale(name);
            locale.LoadIniDateTimeSettings(const_cast<char*>(file.Path()), section);
            locale.Customize("H.mm", "", "", 2, "3;0", 1, 1, ",", "", "", name);
            locale.RegionalizeDecimalSeparator(text);
            const CLCLocale copy(locale);
            failed = gate.Count() > passing;
        }
        EXPECT_EQ(failures.Count(), failed) << passing;
    }
    EXPECT_GT(passing, 100);
}

TEST(LocaleMemory, GlobalLocaleIsMadeAgain) {
    CLCGlobalLocale::Free();
    const ReportedFailures failures;
    {
        const AllocationGate gate(0);
        EXPECT_EQ(CLCGlobalLocale::Instance(), nullptr);
    }
    EXPECT_EQ(failures.Count(), 1);
    EXPECT_NE(CLCGlobalLocale::Instance(), nullptr);
    CLCGlobalLocale::Free();
}

}  // namespace
