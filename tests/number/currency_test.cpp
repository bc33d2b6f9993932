// CGNCurrency: an amount and its code in one text.
#include <gtest/gtest.h>

#include "gennum.h"
#include "tests/support/number_locale.h"
#include "tests/support/texts.h"

TEST(Currency, SplitsIntoAmountAndCode) {
    const struct {
        int line;
        int codeSet;
        const char *text, *amount, *code;
    } kRows[] = {
        {__LINE__, mbWestern, "  12.50   uSd  ", "12.50", "uSd"},
        {__LINE__, mbWestern, "12.50 US", "12.50 US", ""},
        {__LINE__, mbWestern, "USD", "", "USD"},
        {__LINE__, mbWestern, " US ", "", ""},
        {__LINE__, mbWestern, "ABCD", "A", "BCD"},
        {__LINE__, mbWestern, "5 U SD", "5 U SD", ""},
        {__LINE__, mbWestern, "5 \xC9\xE9\xDF", "5", "\xC9\xE9\xDF"},
        {__LINE__, mbWestern, "5 US\xD7", "5 US\xD7", ""},  // a multiplication sign
        {__LINE__, mbUtf8, "5 \xC9\xE9\xDF", "5 \xC9\xE9\xDF", ""},
        {__LINE__, mbShiftJis, "5 \x83USD", "5 \x83USD", ""},           // its U ends a character
        {__LINE__, mbShiftJis, "5\x83UUSD", "5\x83U", "USD"},           // that does not matter here
        {__LINE__, mbShiftJis, "5 USD\x83", "5 USD\x83", ""},           // half a character
        {__LINE__, mbShiftJis, "5 \xB1\xB2\xB3", "5", "\xB1\xB2\xB3"},  // katakana of one byte
        {__LINE__, mbShiftJis, "5 \x83\x41\x83\x42", "5 \x83\x41\x83\x42", ""},
    };
    for (const auto& row : kRows) {
        const NumberLocale locale(".", ",", "3;0", row.codeSet);
        CGNCurrency money(row.text);
        EXPECT_EQ(money.GetCodePortion(), row.code) << row.line;
        EXPECT_EQ(money.GetDecimalPortion(), row.amount) << row.line;
        EXPECT_EQ(money.GetBuffer(), row.text) << row.line;
    }
}

TEST(Currency, DisplaysAmountAndCode) {
    const struct {
        int line;
        const char *text, *inC, *regional, *plain, *asItIs;
    } kRows[] = {
        {__LINE__, "5 usd", "5 USD", "5 USD", "5 USD", "5 USD"},
        {__LINE__, "1.234,50eur", "1234.50 EUR", "1.234,50 EUR", "1234,50 EUR", "1.234,50 EUR"},
        {__LINE__, "1234.5 EUR", "12345 EUR", "1.234,5 EUR", "1234,5 EUR", "1234.5 EUR"},
        {__LINE__, "-7-eur", "eur", "eur", "eur", "-7- EUR"},
        {__LINE__, "1234567", "1234567", "1.234.567", "1234567", "1234567"},
        {__LINE__, "usd", "usd", "usd", "usd", "usd"},
        {__LINE__, "5 us", "", "", "", "5 us"},
        {__LINE__, "5 \xE9\xE8y", "5 \xC9\xC8Y", "5 \xC9\xC8Y", "5 \xC9\xC8Y", "5 \xC9\xC8Y"},
        {__LINE__, "", "", "", "", ""},
        {__LINE__, "   ", "", "", "", ""},
    };
    const NumberLocale locale(",", ".");
    for (const auto& row : kRows) {
        CGNCurrency inC(row.text), regional(row.text), asItIs(row.text);
        EXPECT_EQ(inC.FormatCurrencyToCLocale(), 1);
        EXPECT_EQ(Bytes(inC.GetDisplayCurrency()), row.inC) << row.line;
        EXPECT_EQ(regional.FormatCurrencyToRegional(1), 1);
        EXPECT_EQ(Bytes(regional.GetDisplayCurrency()), row.regional) << row.line;
        EXPECT_EQ(regional.FormatCurrencyToRegional(0), 1);
        EXPECT_EQ(Bytes(regional.GetDisplayCurrency()), row.plain) << row.line;
        asItIs.ResetDisplayBuffer();  // does not split
        EXPECT_EQ(Bytes(asItIs.GetDisplayCurrency()), "");
        asItIs.GetCodePortion();
        asItIs.ResetDisplayBuffer();
        EXPECT_EQ(Bytes(asItIs.GetDisplayCurrency()), row.asItIs) << row.line;
        EXPECT_EQ(asItIs.GetBuffer(), row.text);
    }
    CGNCurrency money("5 usd");
    money.FormatCurrencyToCLocale();
    EXPECT_EQ(money.GetCodePortion(), "USD");
}

TEST(Currency, UpdatesOnePortion) {
    const NumberLocale locale(".", ",");
    CGNCurrency money(" 5usd");
    money.FormatCurrencyToCLocale();
    money.UpdateDecimalPortion("1,234.5");
    EXPECT_EQ(money.GetBuffer(), "1,234.5 USD");
    EXPECT_EQ(Bytes(money.GetDisplayCurrency()), "");
    EXPECT_EQ(money.GetDecimalPortion(), "1,234.5");
    money.UpdateCodePortion("eur");
    EXPECT_EQ(money.GetBuffer(), "1,234.5 eur");
    money.UpdateCodePortion("Euro");  // the text is split anew
    EXPECT_EQ(money.GetCodePortion(), "uro");
    EXPECT_EQ(money.GetDecimalPortion(), "1,234.5 E");
    money.UpdateCodePortion("");
    EXPECT_EQ(money.GetBuffer(), "1,234.5 E");
    money.UpdateDecimalPortion("");
    EXPECT_EQ(money.GetBuffer(), "");
    money.UpdateCodePortion("USD");
    EXPECT_EQ(money.GetBuffer(), " USD");

    // With strings of its own.
    money.SetBuffer("7 USD");
    money.UpdateDecimalPortion(money.GetDecimalPortion());
    EXPECT_EQ(money.GetBuffer(), "7 USD");
    money.FormatCurrencyToCLocale();
    money.UpdateCodePortion(money.GetDisplayCurrency());
    EXPECT_EQ(money.GetBuffer(), "7 7 USD");
}

TEST(Currency, AssignedTextIsSplitOnDemand) {
    const NumberLocale locale(".", ",");
    CGNCurrency money("5 USD"), other("6 EUR");
    money = CGNString("7 GBP");  // not split yet
    EXPECT_EQ(money.GetCodePortion(), "GBP");
    money = CGNString("8 JPY");
    EXPECT_EQ(money.GetCodePortion(), "GBP");
    EXPECT_EQ(money.GetBuffer(), "8 JPY");
    money.SetBuffer("8 JPY");
    EXPECT_EQ(money.GetCodePortion(), "JPY");

    other.FormatCurrencyToCLocale();
    money = other;
    EXPECT_TRUE(money == other);
    EXPECT_EQ(Bytes(money.GetDisplayCurrency()), "6 EUR");
    CGNCurrency copy(other);
    other.GetCodePortion() = "XXX";
    EXPECT_EQ(money.GetCodePortion(), "EUR");
    EXPECT_EQ(copy.GetCodePortion(), "EUR");
    EXPECT_FALSE(CGNCurrency("6 EUR") == CGNCurrency("6  EUR"));
    money = CGNString();
    EXPECT_TRUE(money.IsEmpty());
    EXPECT_EQ(money.GetCodePortion(), "");

    CGNCurrency empty;
    EXPECT_TRUE(empty.IsEmpty());
    EXPECT_EQ(empty.GetDecimalPortion(), "");
    empty = CGNString("5 USD");
    EXPECT_EQ(empty.GetCodePortion(), "USD");  // an empty value is not split by a look at it ...
    empty.Empty();
    EXPECT_EQ(empty.FormatCurrencyToRegional(1), 1);
    empty = CGNString("5 USD");
    EXPECT_EQ(empty.GetCodePortion(), "");  // ... but by formatting
    CGNCurrency blank("  ");
    blank.FormatCurrencyToCLocale();
    blank = CGNString("5 USD");
    EXPECT_EQ(blank.GetCodePortion(), "USD");
}
