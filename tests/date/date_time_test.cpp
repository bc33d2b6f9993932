// CGNDateTime: moments, their range, their text.
#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <tuple>

#include "gendate.h"
#include "tests/support/broken_down.h"
#include "tests/support/custom_locale.h"
#include "tests/support/texts.h"
#include "tests/support/zone_guard.h"

namespace {

constexpr long kLast = 2147483647;

// Puts moments into a zone for the length of a test.
class DateTime : public testing::Test {
  protected:
    ZoneGuard m_zone{"Asia/Tokyo"};
};

}  // namespace

TEST_F(DateTime, FormatsMoments) {
    const CustomLocale locale("en_US", "M/d/yy", "dddd, MMMM dd, yyyy", "H:mm:ss");
    const struct {
        int line;
        long seconds;
        const char* text;
    } kRows[] = {
        {__LINE__, 1269093600, "3/20/10 23:00:00"}, {__LINE__, 0, "1/1/70 9:00:00"},
        {__LINE__, kLast, "1/19/38 12:14:07"},      {__LINE__, -5, "1/19/38 12:14:07"},
        {__LINE__, -kLast - 1, "1/19/38 12:14:07"}, {__LINE__, 951750000, "2/29/00 0:00:00"},
    };
    for (const auto& row : kRows) {
        CGNDateTime moment(row.seconds);
        EXPECT_EQ(moment.GetSecsFrom70(), row.seconds) << row.line;
        EXPECT_EQ(moment.FormatForDisplay(1), 1) << row.line;
        EXPECT_EQ(Display(moment), row.text) << row.line;
    }
    if (sizeof(long) > 4) {
        CGNDateTime far(static_cast<long>(2LL * kLast));
        EXPECT_EQ(far.GetSecsFrom70(), kLast);
    }
    CGNDateTime moment(1269093600L);
    EXPECT_EQ(moment.FormatForDisplay(2), 1);
    EXPECT_EQ(Display(moment), "Saturday, March 20, 2010 23:00:00");
    locale->SetDateFormatString(1, "yyy");
    EXPECT_EQ(moment.FormatForDisplay(1), 1);  // one of two parts is enough
    EXPECT_EQ(Display(moment), " 23:00:00");
    EXPECT_EQ(moment.FormatDateForDisplay(1), 0);
    EXPECT_EQ(moment.FormatTimeForDisplay(), 1);
    EXPECT_EQ(Display(moment), "23:00:00");
    std::tm record;
    moment.ToTM(&record);
    EXPECT_EQ(record.tm_mon, 2);
    EXPECT_EQ(record.tm_wday, 6);
    EXPECT_EQ(CGNDateTime::MkTimeTS(&record), 1269093600);
}

TEST_F(DateTime, DoesNotFormatEmptyValues) {
    CGNDateTime moment(1269093600L);
    moment.FormatForDisplay(1);
    const std::string text = Display(moment);
    moment.Empty();
    EXPECT_TRUE(moment.IsEmpty());
    EXPECT_EQ(Display(moment), "");
    CGNDateTime other(static_cast<CLCLocale*>(nullptr));
    EXPECT_TRUE(other.IsEmpty());
    other.FormatTimeForDisplay();
    const std::string kept = Display(other);
    EXPECT_NE(kept, "");
    EXPECT_EQ(other.FormatDateForDisplay(1), 0);
    EXPECT_EQ(Display(other), kept);
    EXPECT_EQ(other.FormatForDisplay(1), 0);
    EXPECT_EQ(Display(other), "");
    std::tm record = BrokenDown(2010, 3, 20, 1, 2, 3);
    const CGNDateTime taken(&record);
    EXPECT_EQ(taken.GetSecsFrom70(), 0);
    EXPECT_NE(Display(taken), "");
}

TEST_F(DateTime, FormatsErasInACalendarOfEras) {
    const CustomLocale locale("ja_JP", "gg y/M/d", "yy yyyy", "H:mm");
    locale->SetCalendarType(3);
    CGNDateTime moment(1269093600L), early(0L);
    moment.FormatDateForDisplay(1);
    EXPECT_EQ(Display(moment), " 22/3/20");
    early.FormatDateForDisplay(2);
    EXPECT_EQ(Display(early), "45 45");
    CGNString era, rest;
    early.Emperor(era);
    EXPECT_TRUE(era == "\x8F\xBA\x98\x61");
    EXPECT_EQ(moment.GetDateFromStringUsingFormat("\x95\xBD\x90\xAC 2/3/4", rest, "gg y/M/d"), 1);
    CGNString year;
    moment.Year4Digit(year);
    EXPECT_TRUE(year == "02");
    EXPECT_EQ(moment.GetDateFromStringUsingFormat("\x8F\xBA\x98\x61 45/3/4", rest, "gg y/M/d"), 1);
    moment.Emperor(era);
    EXPECT_TRUE(era == "\x8F\xBA\x98\x61");
    locale->SetCalendarType(1);
    moment.Year4Digit(year);
    EXPECT_TRUE(year == "1970");
    moment.Year1Digit(year);
    EXPECT_TRUE(year == "70");
}

TEST_F(DateTime, RefusesMomentsOutOfRange) {
    const struct {
        int line;
        std::tm record;
        long status;  // 1: valid
    } kRows[] = {
        {__LINE__, BrokenDown(2010, 4, 30, 23, 59, 59), 1},
        {__LINE__, BrokenDown(2010, 4, 31, 0), 2},
        {__LINE__, BrokenDown(2010, 4, 1, 25, 0, 0), 3},
        {__LINE__, BrokenDown(2010, 4, 31, 0, 60, 0), 3},
        {__LINE__, BrokenDown(2010, 4, 1, 0, 0, -1), 3},
        {__LINE__, BrokenDown(2010, 4, 0, 0), 2},
        {__LINE__, BrokenDown(2038, 0, 18, 23, 0, 0), 2},
        {__LINE__, BrokenDown(1969, 12, 31, 0), 2},
        {__LINE__, BrokenDown(1970, 1, 1, 9, 0, 0), 1},
        {__LINE__, BrokenDown(2038, 2, 1, 0), 2},
        {__LINE__, BrokenDown(2038, 1, 19, 0), 2},
        {__LINE__, BrokenDown(2038, 1, 18, 12, 14, 7), 1},
        {__LINE__, BrokenDown(2038, 1, 18, 12, 14, 8), 4},
        {__LINE__, BrokenDown(2038, 1, 18, 13, 0, 0), 4},
    };
    for (const auto& row : kRows) {
        CGNDateTime checker;
        std::tm record = row.record;
        EXPECT_EQ(checker.VerifyDateTime(&record), row.status == 1) << row.line;
        EXPECT_EQ(checker.GetDateTimeRangeStatus(), row.status) << row.line;
        EXPECT_EQ(record.tm_mday, row.record.tm_mday) << row.line;
    }
    CGNDateTime checker;
    std::tm before = BrokenDown(1970, 1, 1, 8, 59, 59);  // a second too early: no moment at all
    EXPECT_EQ(checker.VerifyDateTime(&before), 0);
    EXPECT_EQ(checker.GetDateTimeRangeStatus(), 1);
    EXPECT_EQ(CGNDateTime::MinYear(), 70);
    int hour, minute, second;
    CGNDateTime::MaxTime(&hour, &minute, &second);
    EXPECT_EQ(std::make_tuple(hour, minute, second), std::make_tuple(12, 14, 7));
    EXPECT_TRUE(CGNDateTime::IsValidDate(70, 0, 1));
    EXPECT_TRUE(CGNDateTime::IsValidDate(138, 0, 19));
    EXPECT_FALSE(CGNDateTime::IsValidDate(69, 11, 31));
    EXPECT_FALSE(CGNDateTime::IsValidDate(138, 0, 20));
    ZoneGuard::Set("America/New_York");
    EXPECT_EQ(CGNDateTime::MinYear(), 69);
    EXPECT_EQ(CGNDateTime::IsValidDate(69, 11, 31), 1);
    std::tm skipped = BrokenDown(2010, 3, 14, 2, 30, 0);  // clocks go from 2 to 3
    EXPECT_EQ(checker.VerifyDateTime(&skipped), 0);
    EXPECT_EQ(checker.GetDateTimeRangeStatus(), 2);
    std::tm twice = BrokenDown(2010, 11, 7, 1, 30, 0);
    EXPECT_EQ(checker.VerifyDateTime(&twice), 1);
}

TEST_F(DateTime, FormatsItsRange) {
    const CustomLocale locale("en_US", "M/d/yyyy", "MMMM d, yyyy", "h:mm:ss tt");
    CGNString least, most;
    CGNDateTime::GetMinMaxDateRange(least, most, 1);
    EXPECT_TRUE(least == "1/1/1970");
    EXPECT_TRUE(most == "1/19/2038");
    CGNDateTime::GetMinMaxDateRange(least, most, 2);
    EXPECT_TRUE(most == "January 19, 2038");
    CGNDateTime::GetMinMaxTimeRange(least, most);
    EXPECT_TRUE(least == "12:00:00 AM");
    EXPECT_TRUE(most == "11:59:59 PM");
    CGNDateTime::GetMinMaxDateTimeRange(least, most, 1);
    EXPECT_TRUE(most == "1/19/2038 12:14:07 PM");
}

TEST_F(DateTime, FindsLocalMidnight) {
    for (const char* zone : {"Asia/Tokyo", "America/New_York", "Asia/Kathmandu", "UTC"}) {
        ZoneGuard::Set(zone);
        const long midnight = CGNDateTime::GetLocalMidnightToday(), now = CGNDateTime::Now();
        std::tm local, present;
        CGNDateTime::LocalTimeTS(midnight, local);
        CGNDateTime::LocalTimeTS(now, present);
        EXPECT_LE(midnight, now);
        EXPECT_EQ(local.tm_yday, present.tm_yday) << zone;
    }
}
