// CGNDecimal: numbers as text, in the C locale's format and in a locale's. fuzz/number_fuzz.cpp
// compares the conversions of any text with a slow reading of the rules.
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "gennum.h"
#include "tests/support/number_locale.h"
#include "tests/support/texts.h"

namespace {

constexpr const char* kFails = nullptr;

// What a conversion displays: nothing if it fails.
std::string Shown(const CGNDecimal& number, unsigned char converted) {
    if (converted) return Display(number);
    return Display(number).empty() ? "fails" : Join({"fails and displays ", Display(number)});
}

std::string ToC(const std::string& text, unsigned char regional) {
    CGNDecimal number("7");
    number.ConvertToCLocale(0);
    number.SetRawBuffer(text.c_str());
    return Shown(number, number.ConvertToCLocale(regional));
}

std::string ToRegional(const std::string& text, unsigned char separators = 1) {
    CGNDecimal number("7");
    number.ConvertToCLocale(0);
    number.SetRawBuffer(text.c_str());
    return Shown(number, number.ConvertToRegionalLocale(separators));
}

}  // namespace

TEST(Decimal, ConvertsToTheCLocale) {
    const struct {
        int line;
        const char *text, *english, *german;
    } kRows[] = {
        {__LINE__, "", "0", "0"},
        {__LINE__, "-.5", "-0.5", "-0.5"},
        {__LINE__, "5-  ", "-5", "-5"},
        {__LINE__, ",5", kFails, "0.5"},
        {__LINE__, "1,,2,", "12", kFails},
        {__LINE__, "1.234,5", kFails, "1234.5"},
        {__LINE__, "1.234", "1.234", "1.234"},  // valid in both: as in the C locale
        {__LINE__, "5 -", kFails, kFails},
        {__LINE__, "5\x83", kFails, kFails},  // half a character in Shift-JIS
    };
    for (const int codeSet : {int{mbWestern}, int{mbShiftJis}, int{mbUtf8}})
        for (const auto& row : kRows) {
            const NumberLocale locale(".", ",", "3;0", codeSet);
            EXPECT_EQ(ToC(row.text, 0), row.english ? row.english : "fails") << row.line;
            locale.Change(",", ".");
            EXPECT_EQ(ToC(row.text, 0), row.german ? row.german : "fails") << row.line;
        }
    const NumberLocale german(",", ".");
    EXPECT_EQ(ToC("1.234", 1), "1234");
    EXPECT_EQ(ToC("1.234.567", 1), "1234567");
    EXPECT_EQ(ToC(".5", 1), "fails");
    EXPECT_EQ(CGNDecimal::IsValid("1.234.567"), 0);
    EXPECT_EQ(CGNDecimal::IsValid(".5"), -1);
    EXPECT_EQ(CGNDecimal::IsValid("x"), -1);
    EXPECT_EQ(CGNDecimal::IsValid(""), 0);
    EXPECT_EQ(CGNDecimal::IsValid(nullptr), -1);
    EXPECT_EQ(CGNDecimal::DetermineNumDecimalChars(nullptr), 0);
}

TEST(Decimal, ConvertsToTheLocale) {
    const struct {
        int line;
        const char *decimal, *separator, *grouping, *text, *regional;
    } kRows[] = {
        {__LINE__, ".", ",", "3;0", "1234-", "-1,234"},
        {__LINE__, ",", ".", "12;0", "123456789.5", "12.34.56.78.9,5"},
        {__LINE__, "..", ",,", "3;0", "1234.5", "1,234.5"},  // the first byte of a longer symbol
    };
    for (const auto& row : kRows) {
        const NumberLocale locale(row.decimal, row.separator, row.grouping);
        EXPECT_EQ(ToRegional(row.text), row.regional) << row.line;
    }
    const NumberLocale locale(".", ",");
    EXPECT_EQ(ToRegional("1,2345,67.891", 0), "1234567.891");
    EXPECT_EQ(ToRegional("5,5.5,5"), "fails");
}
// A symbol's byte counts as a character or the first byte of one, not as a later byte.
TEST(Decimal, FindsSymbolsBetweenCharacters) {
    const NumberLocale locale("|", "\x81", "3;0", mbShiftJis);
    EXPECT_EQ(ToC("1\x81"
                  "234|5",
                  1),
              "1234.5");
    EXPECT_EQ(ToC("12\x81|5", 1), "fails");  // 0x81 0x7C is a dash
    EXPECT_EQ(ToC("12|5\x81", 1), "fails");
    locale.Change("|", "\x81");
    EXPECT_EQ(ToRegional("1234.5"),
              "1\x81"
              "234|5");
    const CodeSetGuard western(mbWestern);
    EXPECT_EQ(ToC("12\x81|5", 1), "12.5");
}

TEST(Decimal, MultipliesByPowersOfTen) {
    const struct {
        int line;
        const char* text;
        int exponent;
        const char* shifted;
    } kRows[] = {
        {__LINE__, "-12345,6", -5, "-0,123456"},
        {__LINE__, "-7,12345", 2, "-712,34"},  // keeps as many digits as were moved
        {__LINE__, "1,5", INT_MIN, "1,5"},
        {__LINE__, "1,5", INT_MAX, "1,5"},
    };
    const NumberLocale locale(",", ".");
    for (const auto& row : kRows) {
        CGNDecimal number(row.text);
        ASSERT_EQ(number.ConvertToRegionalLocale(1), 1) << row.line;
        number.ApplyExponent(row.exponent);
        EXPECT_EQ(Display(number), row.shifted) << row.line;
        EXPECT_EQ(number.GetRawBuffer(), row.text) << row.line;
    }
    CGNDecimal never;
    never.ApplyExponent(2);
    EXPECT_EQ(Display(never), "00");
    // A number displayed before the locale changed is read as far as possible.
    CGNDecimal number("1234.5");
    number.ConvertToRegionalLocale(1);
    locale.Change(".", ",");
    number.ApplyExponent(1);
    EXPECT_EQ(Display(number), "2.3");
}

TEST(Decimal, LimitsTheLengthOfTexts) {
    const NumberLocale locale(".", ",", "1;0");
    const std::string digits(10000, '9'), limit(255, '8'), ones(62, '1');
    EXPECT_EQ(ToC(digits, 0), digits.substr(0, 63));
    EXPECT_EQ(ToC(Join({ones, "-5"}), 0), Join({"-", ones}));
    EXPECT_EQ(CGNDecimal::IsValid(digits.c_str()), -1);
    EXPECT_EQ(CGNDecimal::DetermineNumDecimalChars(digits.c_str()), 10000);
    EXPECT_EQ(CGNDecimal::IsValid(Join({limit, ".", limit}).c_str()), 0);
    for (const char* more : {"1", "1,"})
        EXPECT_EQ(CGNDecimal::IsValid(Join({more, limit}).c_str()), -1) << more;
    EXPECT_EQ(CGNDecimal::IsValid(Join({".", limit, "1"}).c_str()), -1);
    CGNDecimal number("1");
    number.ConvertToCLocale(0);
    number.ApplyExponent(254);
    EXPECT_EQ(Display(number), Join({"1", std::string(254, '0')}));
    number.ApplyExponent(1);
    EXPECT_EQ(Display(number).size(), 255u);
}
TEST(Decimal, HasTheSymbolsOfTheLocale) {
    const NumberLocale locale("*#", "'#");
    CGNDecimal number;
    EXPECT_EQ(number.GetRegionalDecimalSymbol(), '*');
    EXPECT_EQ(number.GetRegionalThousandSep(), '\'');
    locale.Change(",", ".");
    EXPECT_EQ(number.GetRegionalDecimalSymbol(), ',');
    EXPECT_EQ(number.GetRegionalThousandSep(), '.');
    EXPECT_EQ(number.GetCLocaleDecimalSymbol(), '.');
    EXPECT_EQ(number.GetCLocaleThousandSep(), ',');
    EXPECT_EQ(CGNDecimal::IsThousandsSeparator('.'), 1);
    EXPECT_EQ(CGNDecimal::IsThousandsSeparator(','), 0);
}

TEST(Decimal, CopiesAreIndependent) {
    const NumberLocale locale(",", ".");
    CGNDecimal number("1234,5");
    ASSERT_EQ(number.ConvertToRegionalLocale(1), 1);
    CGNDecimal copy(number), assigned("9");
    assigned = number;
    CGNDecimal& itself = number;
    number = itself;
    number.SetRawBuffer(nullptr);
    EXPECT_TRUE(number.IsEmpty());
    EXPECT_EQ(Display(number), "1.234,5");
    for (CGNDecimal* each : {&copy, &assigned}) {
        EXPECT_EQ(each->GetRawBuffer(), "1234,5");
        EXPECT_EQ(Display(*each), "1.234,5");
        each->InitValue();
        EXPECT_TRUE(each->IsEmpty());
        EXPECT_EQ(Display(*each), "");
    }
    CGNDecimal same("1,5-");
    same.SetRawBuffer(same.GetRawBuffer());
    EXPECT_EQ(same.GetRawBuffer(), "1,5-");
    CLCLocale filled;
    filled.SetLocale("de_DE");
    filled.SetTimeSep("?");
    const CGNDecimal empty(&filled);
    EXPECT_TRUE(empty.IsEmpty());
    CGNString separator;
    filled.TimeSep(separator);
    EXPECT_EQ(separator, ":");
    EXPECT_TRUE(CGNDecimal(static_cast<CLCLocale*>(nullptr)).IsEmpty());
}
