// Holders, and numbers without a locale, when memory runs out; fuzz/memory_unit_fuzz.cpp lets
// single allocations fail.
#include <gtest/gtest.h>

#include "gennum.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/number_locale.h"
#include "tests/support/reported_failures.h"

TEST(NumberMemory, HoldersAreNullAfterAFailure) {
    {
        const CGNLocale locale;
        const CGNNumber number;
        const CGNMoney money;
        ASSERT_NE(locale.GetLocale(), nullptr);
        EXPECT_TRUE(locale.GetLocale()->LocaleIsEnglish());
        ASSERT_NE(number.GetNumber(), nullptr);
        ASSERT_NE(money.GetMoney(), nullptr);
        *number.GetNumber() = CLCNumber(*number.GetNumber());
        *money.GetMoney() = CLCMoney(*money.GetMoney());
    }
    const ReportedFailures reported;
    const AllocationGate gate(0);
    EXPECT_EQ(CGNLocale().GetLocale(), nullptr);
    EXPECT_EQ(CGNNumber().GetNumber(), nullptr);
    EXPECT_EQ(CGNMoney().GetMoney(), nullptr);
}

TEST(NumberMemory, ShortTextsNeedNoAllocation) {
    const NumberLocale locale(",", ".");
    CGNDecimal number;
    CGNCurrency money;
    const CGNString text("1234567,25 eur"), other("-76543210.5 USD");
    for (int round = 0; round < 3; ++round) {
        const AllocationGate gate(round == 0 ? INT_MAX : 0);
        for (const CGNString* each : {&text, &other}) {
            number.SetRawBuffer("-98765432,125");
            EXPECT_EQ(number.ConvertToRegionalLocale(1), 1);
            number.ApplyExponent(-2);
            number.SetRawBuffer("1.234.567,125");
            EXPECT_EQ(number.ConvertToCLocale(0), 1);
            EXPECT_EQ(CGNDecimal::IsValid("1.234,5"), 0);
            money.SetBuffer(*each);
            EXPECT_EQ(money.FormatCurrencyToRegional(1), 1);
            EXPECT_EQ(money.FormatCurrencyToCLocale(), 1);
        }
        EXPECT_TRUE(round == 0 || gate.Count() == 0) << gate.Count();
    }
    EXPECT_EQ(money.GetDisplayCurrency(), "-765432105 USD");
}

TEST(NumberMemory, ConversionFailsWithoutALocale) {
    const ReportedFailures reported;
    CLCGlobalLocale::Free();
    CGNDecimal number("5");
    const AllocationGate gate(0);
    EXPECT_EQ(number.ConvertToCLocale(1), 0);
    EXPECT_EQ(number.ConvertToRegionalLocale(1), 0);
    number.ApplyExponent(1);
    EXPECT_EQ(CGNDecimal::IsValid("5"), -1);
    EXPECT_EQ(CGNDecimal::DetermineNumDecimalChars("5"), 0);
    EXPECT_EQ(CGNDecimal::IsThousandsSeparator(','), 0);
    EXPECT_EQ(number.GetRegionalDecimalSymbol(), 0);
}
