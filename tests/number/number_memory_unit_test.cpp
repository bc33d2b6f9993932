// Numbers, money and their holders while memory runs out, and where they need none.
#include <gtest/gtest.h>

#include <string>

#include "gennum.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/number_locale.h"
#include "tests/support/reported_failures.h"
#include "tests/support/texts.h"

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

// Each allocation fails once: what is displayed is right or nothing, and nothing is left of what
// was there before.
TEST(NumberMemory, FailedAllocationsShowNoOldNumber) {
    const ReportedFailures reported;
    const NumberLocale locale(".", ",");
    const std::string digits(40, '5');
    int failures = 0;
    for (int passing = 0; passing < 40; ++passing) {
        CGNDecimal number("1");
        CGNCurrency money("1 USD"), updated("2 USD");
        number.ConvertToCLocale(0);
        money.FormatCurrencyToCLocale();
        CGNCurrency assigned(money);
        unsigned char converted, conversion;
        bool exhausted;
        {
            const AllocationGate gate(passing, 1);
            number.SetRawBuffer(digits.c_str());
            conversion = number.ConvertToCLocale(0);
            converted = number.ConvertToRegionalLocale(0);
            money.SetBuffer(Join({digits, "eur"}).c_str());
            money.FormatCurrencyToRegional(0);
            updated.UpdateDecimalPortion(digits.c_str());
            assigned = money;
            exhausted = gate.Count() <= passing;
        }
        const std::string shown = Display(number);
        EXPECT_TRUE(shown == (converted ? digits : "") || (converted && shown == "0")) << passing;
        failures += !conversion || !converted || shown != digits;
        const std::string amount = Bytes(money.GetDisplayCurrency());
        EXPECT_TRUE(amount == Join({digits, " EUR"}) || amount == "eur" || amount == "EUR" ||
                    amount.empty())
            << amount;
        const std::string buffer = Bytes(updated.GetBuffer());
        EXPECT_TRUE(buffer == Join({digits, " USD"}) || buffer == "2 USD" || buffer == " USD" ||
                    buffer.empty())
            << buffer;
        const std::string copied = Bytes(assigned.GetDisplayCurrency());
        EXPECT_TRUE(copied == amount || copied == "1 USD" || copied.empty()) << copied;
        if (exhausted) break;
        EXPECT_LT(passing, 39);
    }
    EXPECT_GT(failures, 0);
    EXPECT_GT(reported.Count(), 0);
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
