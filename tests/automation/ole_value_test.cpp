// Values of automation.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "osutil.h"
#include "tests/support/texts.h"
#include "tests/support/zone_guard.h"

namespace {

std::string TextOf(const COSOLEValue& value) {
    CGNString text("none");
    value.GetText(text);
    return Bytes(text);
}

TEST(OleValue, RefusesDecimalsThatDoNotFit) {
    const struct {
        int line;
        const char *text, *back;  // null: refused
    } kRows[] = {
        {__LINE__, "12.50", "12.50"},
        {__LINE__, "-0.001", "-0.001"},
        {__LINE__, "-0.00", "0.00"},
        {__LINE__, "", "0"},
        {__LINE__, "007", "7"},
        {__LINE__, ".5", "0.5"},
        {__LINE__, "5. ", "5"},
        {__LINE__, "79228162514264337593543950335", "79228162514264337593543950335"},
        {__LINE__, "79228162514264337593543950336", nullptr},
        {__LINE__, "79228162514264337593543950335.0", "79228162514264337593543950335"},
        {__LINE__, "-7.9228162514264337593543950335", "-7.9228162514264337593543950335"},
        {__LINE__, "0.0000000000000000000000000001", "0.0000000000000000000000000001"},
        {__LINE__, "0.00000000000000000000000000010", "0.0000000000000000000000000001"},
        {__LINE__, "0.00000000000000000000000000001", nullptr},
        {__LINE__, "4294967296.4294967296", "4294967296.4294967296"},
        {__LINE__, "1,5", nullptr},
        {__LINE__, "1.2.3", nullptr},
        {__LINE__, "-", nullptr},
        {__LINE__, ".", nullptr},
        {__LINE__, "+1", nullptr},
        {__LINE__, "1e5", nullptr},
    };
    for (const auto& row : kRows) {
        COSOLEValue value("before");
        EXPECT_EQ(value.SetDecimal(CGNDecimal(row.text)), row.back != nullptr) << row.line;
        EXPECT_EQ(value.GetKind(), row.back ? COSOLEValue::kDecimal : COSOLEValue::kEmpty);
        CGNDecimal back;
        if (!row.back) continue;
        EXPECT_TRUE(value.GetDecimal(back)) << row.line;
        EXPECT_EQ(Bytes(back.GetRawBuffer()), row.back) << row.line;
    }
}

TEST(OleValue, RefusesAmountsOfMoreThanFourDecimals) {
    const struct {
        int line;
        const char *text, *back;
    } kRows[] = {
        {__LINE__, "12.50 USD", "12.5 EUR"},
        {__LINE__, "-0.0001", "-0.0001 EUR"},
        {__LINE__, "1.23450", "1.2345 EUR"},
        {__LINE__, "1.23456", nullptr},
        {__LINE__, "922337203685477.5807 JPY", "922337203685477.5807 EUR"},
        {__LINE__, "922337203685477.5808", nullptr},
        {__LINE__, "-922337203685477.5808", "-922337203685477.5808 EUR"},
        {__LINE__, "-922337203685477.5809", nullptr},
        {__LINE__, "1000000 USD", "1000000 EUR"},
        {__LINE__, "99999999999999999999999999", nullptr},
        {__LINE__, "a lot", nullptr},
    };
    for (const auto& row : kRows) {
        COSOLEValue value;
        CGNCurrency back("kept");
        EXPECT_EQ(value.SetCurrency(CGNCurrency(row.text)), row.back != nullptr) << row.line;
        EXPECT_EQ(value.GetCurrency(back, "EUR"), row.back != nullptr) << row.line;
        EXPECT_EQ(Bytes(back.GetBuffer()), row.back ? row.back : "kept") << row.line;
    }
    COSOLEValue decimal;
    CGNCurrency amount;
    decimal.SetDecimal(CGNDecimal("0.12345"));
    EXPECT_FALSE(decimal.GetCurrency(amount));
}

TEST(OleValue, DatesAreExactToTheSecond) {
    const ZoneGuard tokyo("Asia/Tokyo");
    COSOLEValue value;
    // Before and after day 0, from which fractions count in both directions.
    for (const int day : {-2, -1, 0, 1, 40242})
        for (long second = 0; second < 86400; second += second % 3600 == 3599 ? 1 : 7) {
            CGNDate date;
            long back = -1;
            ASSERT_TRUE(value.SetDate(CGNDate(2415019 + day), second));
            ASSERT_TRUE(value.GetDate(date, &back));
            ASSERT_EQ(date.GetDateValue(), 2415019 + day) << second;
            ASSERT_EQ(back, second) << day;
        }
    const struct {
        int line;
        double days;
        const char* text;
    } kRows[] = {
        {__LINE__, 0, "1899-12-30 00:00:00"},
        {__LINE__, -1.25, "1899-12-29 06:00:00"},
        {__LINE__, -0.5, "1899-12-30 12:00:00"},
        {__LINE__, 40242.604166666664, "2010-03-05 14:30:00"},
        {__LINE__, 40242.999999999, "2010-03-06 00:00:00"},
        {__LINE__, -1.999999999, "1899-12-30 00:00:00"},
        {__LINE__, -657434, "0100-01-01 00:00:00"},
        {__LINE__, 2958465.99998, "9999-12-31 23:59:58"},
        {__LINE__, 2958465.9999999, nullptr},
        {__LINE__, 2958466, nullptr},
        {__LINE__, -657435, nullptr},
        {__LINE__, std::numeric_limits<double>::quiet_NaN(), nullptr},
        {__LINE__, std::numeric_limits<double>::infinity(), nullptr},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(value.SetOleDate(row.days), row.text != nullptr) << row.line;
        EXPECT_EQ(TextOf(value), row.text ? row.text : "") << row.line;
    }
    CGNDateTime moment;
    EXPECT_TRUE(value.SetDateTime(CGNDateTime(1267767001L)));
    EXPECT_EQ(TextOf(value), "2010-03-05 14:30:01");
    EXPECT_TRUE(value.GetDateTime(moment));
    EXPECT_EQ(moment.GetSecsFrom70(), 1267767001);
    EXPECT_FALSE(value.SetDateTime(CGNDateTime()));
    EXPECT_TRUE(value.SetOleDate(60000));  // after the last moment
    EXPECT_FALSE(value.GetDateTime(moment));
}

TEST(OleValue, RefusesConversionsThatLoseSomething) {
    constexpr long long kLarge = (1LL << 53) + 1;
    const struct {
        int line;
        COSOLEValue value;
        const char *text, *integer;
    } kRows[] = {
        {__LINE__, 5, "5", "5"},
        {__LINE__, kLarge, "9007199254740993", "9007199254740993"},
        {__LINE__, -3.0, "-3", "-3"},
        {__LINE__, 0.1, "0.1", ""},
        {__LINE__, 1e300, "1e+300", ""},
        {__LINE__, "7", "7", ""},
        {__LINE__, COSOLEValue(), "", ""},
    };
    for (const auto& row : kRows) {
        long long integer = 0;
        const bool whole = row.value.GetInteger(integer);
        EXPECT_EQ(TextOf(row.value), row.text) << row.line;
        EXPECT_EQ(whole ? std::to_string(integer) : "", row.integer) << row.line;
    }
    double real = 1;
    long long whole = 1;
    EXPECT_FALSE(COSOLEValue(kLarge).GetReal(real));
    EXPECT_TRUE(COSOLEValue(-kLarge + 1).GetReal(real));
    EXPECT_FALSE(COSOLEValue(9223372036854775808.0).GetInteger(whole));
    COSOLEValue decimal;
    decimal.SetDecimal(CGNDecimal("12.00"));
    long long twelve = 0;
    EXPECT_TRUE(decimal.GetInteger(twelve));
    EXPECT_EQ(twelve, 12);
    EXPECT_FALSE(decimal.GetReal(real));
}

TEST(OleValue, ArraysHaveBoundsAndOwnTheirItems) {
    COSOLEBound bounds[2];
    bounds[0].m_count = 2;
    bounds[0].m_lower = 1;
    bounds[1].m_count = 3;
    bounds[1].m_lower = -1;
    COSOLEValue grid;
    ASSERT_TRUE(grid.SetArray(bounds, 2, COSOLEValue::kText));
    EXPECT_EQ(grid.GetCount(), 6);
    const long inside[] = {2, 0}, outside[] = {3, 0}, below[] = {1, -2};
    ASSERT_EQ(grid.GetPosition(inside), 3);
    EXPECT_EQ(grid.GetPosition(outside), -1);
    EXPECT_EQ(grid.GetPosition(below), -1);
    *grid.GetItem(3) = "here";
    const COSOLEValue copy(grid);
    grid = COSOLEValue(*grid.GetItem(3));
    EXPECT_EQ(TextOf(grid), "here");
    EXPECT_EQ(TextOf(*copy.GetItem(3)), "here");
    COSOLEValue nested(copy);
    *nested.GetItem(0) = nested;  // its own item
    EXPECT_EQ(TextOf(*nested.GetItem(0)->GetItem(3)), "here");
    nested = *nested.GetItem(0);  // by its own item
    EXPECT_EQ(nested.GetDimensions(), 2);
    EXPECT_EQ(nested.GetBound(1).m_lower, -1);
    EXPECT_EQ(nested.GetItem(6), nullptr);

    EXPECT_FALSE(grid.SetArray(-1));
    EXPECT_FALSE(grid.SetArray(0x7FFFFFFF));
    EXPECT_FALSE(grid.SetArray(1, 0, COSOLEValue::kBytes));
    EXPECT_FALSE(grid.SetArray(bounds, 0));
    EXPECT_EQ(grid.GetKind(), COSOLEValue::kEmpty);
    EXPECT_TRUE(grid.SetBytes("a\0b", 3));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(grid.GetBytes()), 3),
              std::string("a\0b", 3));
    EXPECT_TRUE(grid.SetBytes(grid.GetBytes() + 1, 2));
    EXPECT_EQ(grid.GetBytes()[1], 'b');
    EXPECT_TRUE(grid.SetBytes(nullptr, 0));
    EXPECT_EQ(grid.GetCount(), 0);
}

TEST(OleValue, ArgumentsKeepNamesAndReferences) {
    COSOLEArguments arguments;
    arguments.Add(1).AddMissing().AddNamedByReference("n", "text");
    for (int i = 0; i < 20; ++i) arguments.Add(arguments.Get(2));
    EXPECT_EQ(arguments.GetCount(), 23);
    EXPECT_EQ(arguments.Get(1).GetKind(), COSOLEValue::kMissing);
    EXPECT_EQ(Bytes(arguments.GetName(2)), "n");
    EXPECT_TRUE(arguments.IsByReference(2));
    EXPECT_FALSE(arguments.IsByReference(22));
    EXPECT_EQ(TextOf(arguments.Get(22)), "text");
    EXPECT_EQ(arguments.Get(-1).GetKind(), COSOLEValue::kEmpty);
}

}  // namespace
