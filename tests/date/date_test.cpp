// CGNDate: its calendar, its text, its reading.
#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "gendate.h"
#include "tests/support/custom_locale.h"
#include "tests/support/texts.h"

namespace {

constexpr char kLong[] = "dddd, MMMM dd, yyyy";

int DayNumber(int year, int month, int day) {
    return CGNDate::DateToJulianDate(year, month, day);
}

int PresentYear() {
    std::tm now;
    CGNDate::LocalTimeTS(CGNDate::Now(), now);
    return now.tm_year + 1900;
}

}  // namespace

TEST(Date, ConvertsDayNumbers) {
    const struct {
        int line, day, year, month, dayOfMonth, weekday, bc;
    } kRows[] = {
        {__LINE__, -2147483647 - 1, 4713, 1, 1, 2, 1}, {__LINE__, 0, 4713, 1, 1, 2, 1},
        {__LINE__, 1721423, 1, 12, 31, 6, 1},          {__LINE__, 2299161, 1582, 10, 15, 6, 0},
        {__LINE__, 5373120, 9999, 1, 1, 6, 0},         {__LINE__, 2147483647, 9999, 1, 1, 6, 0},
    };
    for (const auto& row : kRows) {
        const CGNDate date(row.day);
        EXPECT_EQ(date.GetYear(), row.year) << row.line;
        EXPECT_EQ(date.GetMonth(), row.month) << row.line;
        EXPECT_EQ(date.GetDay(), row.dayOfMonth) << row.line;
        EXPECT_EQ(date.GetWeekday(), row.weekday) << row.line;
        EXPECT_EQ(date.GetYearBC(), row.bc) << row.line;
        if (row.day >= 0 && row.day <= 5373120) {
            EXPECT_EQ(date.GetDateValue(), row.day) << row.line;
        }
    }
}

TEST(Date, KeepsUncheckedFields) {
    CGNDate date(2010, 1, 3, 15, 9);
    EXPECT_EQ(date.GetWeekday(), 9);
    EXPECT_EQ(date.GetYearBC(), 1);
    std::tm record;
    date.ToTM(&record);
    EXPECT_EQ(record.tm_year, 110);
    EXPECT_EQ(record.tm_mon, 3);
    EXPECT_EQ(record.tm_mday, 15);
    EXPECT_EQ(record.tm_wday, 9);
    date.Empty();
    EXPECT_TRUE(date.IsEmpty());
    EXPECT_EQ(date.GetWeekday(), 0);
    EXPECT_EQ(date.GetYearBC(), 0);
    EXPECT_TRUE(CGNDate().IsEmpty());
    EXPECT_EQ(CGNDate().GetWeekday(), 2);
}

TEST(Date, KnowsLeapYearsWeeksAndCenturies) {
    const struct {
        int line, year, month, day, leap;
    } kYears[] = {
        {__LINE__, 2000, 2, 29, 0},  {__LINE__, 2000, 10, 14, 0}, {__LINE__, 2000, 9, 30, 0},
        {__LINE__, 2000, 10, 15, 1}, {__LINE__, 2004, 1, 1, 1},   {__LINE__, 1580, 1, 1, 1},
        {__LINE__, 1900, 12, 31, 0}, {__LINE__, 1500, 12, 31, 0},
    };
    for (const auto& row : kYears)
        EXPECT_EQ(CGNDate::IsLeapYear(row.year, row.month, row.day), row.leap)
            << row.year << '-' << row.month << '-' << row.day;
    const struct {
        int line, year, month, day, week;
    } kWeeks[] = {{__LINE__, 2010, 1, 1, 53},   {__LINE__, 2010, 1, 3, 53},
                  {__LINE__, 2010, 1, 4, 1},    {__LINE__, 2008, 12, 29, 1},
                  {__LINE__, 2020, 12, 31, 53}, {__LINE__, 2021, 6, 15, 24}};
    for (const auto& row : kWeeks)
        EXPECT_EQ(CGNDate::GetWeekNumber(DayNumber(row.year, row.month, row.day)), row.week)
            << row.line;
    const int present = PresentYear(), century = present - present % 100;
    for (int two : {0, 39, 99, present % 100 + 29, present % 100 + 30}) {
        int year = 0;
        CGNDate::Convert2DigitTo4DigitYear(two, year);
        EXPECT_EQ(year, century + two > present + 29 ? century + two - 100 : century + two);
    }
}

TEST(Date, RefusesDatesThatDoNotExist) {
    const CustomLocale locale("en_US", "M/d/yyyy", kLong, "H:mm");
    const struct {
        int line, year, bc, month, day, weekday;  // 0: does not exist
    } kRows[] = {
        {__LINE__, 2010, 0, 3, 15, 2},  {__LINE__, 2009, 0, 2, 29, 0},
        {__LINE__, 1582, 0, 10, 14, 0}, {__LINE__, 2010, 0, 13, 1, 0},
        {__LINE__, 1, 1, 12, 31, 6},    {__LINE__, 1, 1, 2, 29, 1},
        {__LINE__, 4714, 1, 12, 31, 0}, {__LINE__, 10000, 0, 1, 1, 0},
    };
    for (const auto& row : kRows) {
        CGNDate date(row.year, static_cast<unsigned char>(row.bc), row.month, row.day, 99);
        int weekday = 55;
        EXPECT_EQ(date.VerifyDate(row.year, row.month, row.day, weekday), row.weekday != 0)
            << row.line;
        EXPECT_EQ(weekday, row.weekday ? row.weekday : 55) << row.line;
        date.VerifyDate();
        EXPECT_EQ(date.GetWeekday(), row.weekday ? row.weekday : 99) << row.line;
        EXPECT_EQ(date.GetDateStatus(), 0);
    }
    CGNDate date;
    CGNString name("kept");
    EXPECT_EQ(date.VerifyDate(2010, 2, 30, name), 0);
    EXPECT_TRUE(name == "kept");
    EXPECT_EQ(date.GetLastDayOfYearAndMonth(2009, 2, name), 28);
    EXPECT_TRUE(name == "Saturday");
    int weekday = 0;
    EXPECT_EQ(date.GetLastDayOfYearAndMonth(1582, 10, weekday), 31);
    EXPECT_EQ(date.GetLastDayOfYearAndMonth(2009, 13, weekday), -1);
}

TEST(Date, FormatsByTheLocalesFormat) {
    const CGNDate friday(2010, 0, 3, 5, 6), caesar(44, 1, 3, 15, 4), odd(5, 0, 14, 9, 8);
    const struct {
        int line;
        const CGNDate& date;
        const char* pattern;
        const char* text;  // null: malformed
    } kRows[] = {
        {__LINE__, friday, "M/d/yy", "3/5/2010"},
        {__LINE__, friday, "yyyy-MM-dd", "2010-03-05"},
        {__LINE__, friday, kLong, "Friday, March 05, 2010"},
        {__LINE__, friday, "ddd MMM y", "Fri Mar 2010"},
        {__LINE__, friday, "'day 'd'd'", "day 5d"},
        {__LINE__, friday, "d''M", "53"},
        {__LINE__, friday, "d 'open", "5 "},
        {__LINE__, friday, "ggyyyyWWWW", "2010"},
        {__LINE__, friday, "WWWd", "5"},
        {__LINE__, friday, "h:m", "h:m"},
        {__LINE__, friday, "", ""},
        {__LINE__, friday, "d.yyy", nullptr},
        {__LINE__, friday, "ddddd", nullptr},
        {__LINE__, friday, "MMMMM", nullptr},
        {__LINE__, friday, "yyyyy", nullptr},
        {__LINE__, friday, "g", nullptr},
        {__LINE__, friday, "ggg", nullptr},
        {__LINE__, friday, "W", nullptr},
        {__LINE__, caesar, "M/d/yyyy", "3/15/0044 B.C."},
        {__LINE__, caesar, "yyyy/M/d", "B.C. 0044/3/15"},
        {__LINE__, odd, "dddd-ddd-MMMM-MMM-MM-yyyy", "----14-0005"},
    };
    for (const auto& row : kRows) {
        const CustomLocale locale("en_US", "?", "?", "H:mm");
        locale->SetDateFormatString(1, row.pattern);
        CGNDate date(row.date);
        EXPECT_EQ(date.FormatForDisplay(1), row.text != nullptr) << row.line;
        if (!row.text) continue;
        EXPECT_EQ(Display(date), row.text) << row.line;
    }
    const CustomLocale locale("en_US", "d.yyy", "dd MMMM yyyy", "H:mm");
    CGNDate date(friday);
    EXPECT_EQ(date.FormatForDisplay(0), 0);
    EXPECT_EQ(Display(date), "5.");  // the text before the malformed run
    EXPECT_EQ(date.AddDateString(2), 1);
    EXPECT_EQ(Display(date), "5.05 March 2010");
    EXPECT_EQ(date.FormatForDisplay(7), 1);
    EXPECT_EQ(Display(date), "");
    locale->SetLongOrShort(2);
    EXPECT_EQ(date.FormatForDisplay(3), 1);
    EXPECT_EQ(Display(date), "05 March 2010");
    EXPECT_EQ(CGNDate().FormatForDisplay(2), 0);
}

TEST(Date, FormatsForACalendar) {
    const struct {
        int line;
        const char* longDate;
        long style;
        const char* text;
    } kRows[] = {{__LINE__, kLong, 1, "Friday, 3/5/2010"},
                 {__LINE__, "yyyy", 1, "3/5/2010 Friday"},
                 {__LINE__, "dd", 1, "Friday, 3/5/2010"},
                 {__LINE__, "d", 7, "Friday, "},
                 {__LINE__, kLong, 2, "Friday, March 05, 2010"}};
    for (const auto& row : kRows) {
        const CustomLocale locale("en_US", "M/d/yy", row.longDate, "H:mm");
        CGNDate date(2010, 0, 3, 5, 6);
        EXPECT_EQ(date.FormatForCalendarDisplay(row.style), 1) << row.line;
        EXPECT_EQ(Display(date), row.text) << row.line;
    }
    const CustomLocale locale("en_US", "M/d/yy", kLong, "H:mm");
    CGNDate nameless(2010, 0, 3, 5, 0);
    EXPECT_EQ(nameless.FormatForCalendarDisplay(1), 1);
    EXPECT_EQ(Display(nameless), "3/5/2010");
    CGNString name("?");
    EXPECT_EQ(nameless.DayName(name), 0);
    EXPECT_TRUE(name == "");
}

TEST(Date, ReadsOneComponent) {
    const CustomLocale locale("ja_JP", "yyyy/MM/dd", "gg yy'\x94\x4E'M'\x8C\x8E'd", "H:mm");
    CGNDate date;
    CGNString rest("kept");
    EXPECT_EQ(date.GetMonthNumFromString("13/", rest), 0);
    EXPECT_EQ(date.GetDateStatus(), 1);
    EXPECT_TRUE(rest == "kept");
    EXPECT_EQ(date.GetMonthNumFromString("  0x", rest), 1);
    EXPECT_TRUE(rest == "x");
    EXPECT_EQ(date.GetDayNumFromString("\t1", rest) + date.GetDateSepFromString("-", rest), 0);
    rest = "/x/";
    EXPECT_EQ(date.GetDateSepFromString(rest, rest), 1);  // into itself
    EXPECT_TRUE(rest == "x/");
    EXPECT_EQ(date.GetMatchingCharFromString(" x/", rest, 'x'), 1);
    EXPECT_TRUE(rest == "/");
    EXPECT_EQ(date.Get4DigitYearFromString("x", rest), 1);
    EXPECT_TRUE(rest == "x");

    const CGNString showa(
        "\x8F\xBA\x98\x61"
        "5");
    rest = "kept";
    EXPECT_EQ(date.GetEmperorFromString("5", rest), 0);
    EXPECT_TRUE(rest == "5");
    EXPECT_EQ(date.GetEmperorFromString(showa, rest), 0);  // no calendar of eras
    EXPECT_TRUE(rest == showa);
    locale->SetCalendarType(3);
    EXPECT_EQ(date.GetEmperorFromString(showa, rest), 1);
    EXPECT_TRUE(rest == "5");
}
