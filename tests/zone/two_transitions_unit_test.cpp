// Local time by a pair of changes in the year.
#include <gtest/gtest.h>

#include "genutil/zone/two_transitions.h"

using namespace genutil;

namespace {

std::tm Local(int month, int day, int weekday, int hour, int minute = 0, int second = 0) {
    std::tm local = {};
    local.tm_mon = month - 1;
    local.tm_mday = day;
    local.tm_wday = weekday;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_sec = second;
    return local;
}

}  // namespace

TEST(TwoTransitions, ComparesTimesWithChanges) {
    const ChangeDate date = {2010, 3, 0, 14, 2, 30, 15}, second = {0, 3, 0, 2, 2, 0, 0},
                     last = {0, 10, 0, 5, 3, 0, 0}, february = {0, 2, 0, 5, 3, 0, 0},
                     september = {0, 9, 3, 5, 3, 0, 0};
    const struct {
        int line;
        std::tm local;
        const ChangeDate& change;
        bool behind;
    } kRows[] = {
        {__LINE__, Local(3, 14, 0, 2, 30, 15), date, false},
        {__LINE__, Local(3, 14, 0, 2, 30, 16), date, true},
        {__LINE__, Local(3, 14, 0, 2, 31, 0), date, true},
        {__LINE__, Local(3, 13, 6, 23, 59, 59), date, false},
        {__LINE__, Local(2, 28, 0, 23), date, false},
        {__LINE__, Local(3, 14, 0, 2), second, true},  // day 14 is in week 3
        {__LINE__, Local(3, 7, 0, 2), second, false},  // and day 7 in week 2
        {__LINE__, Local(3, 7, 0, 2, 0, 1), second, true},
        {__LINE__, Local(3, 8, 1, 0), second, true},
        {__LINE__, Local(3, 6, 6, 23), second, false},
        {__LINE__, Local(4, 1, 0, 0), second, true},
        {__LINE__, Local(10, 24, 0, 12), last, true},  // 30 days are counted for October
        {__LINE__, Local(10, 23, 6, 12), last, false},
        {__LINE__, Local(10, 31, 0, 3), last, false},
        {__LINE__, Local(10, 31, 0, 3, 0, 1), last, true},
        {__LINE__, Local(10, 30, 6, 12), last, true},      // Saturday is a later weekday
        {__LINE__, Local(2, 24, 3, 12), february, false},  // 31 days are counted for February
        {__LINE__, Local(2, 25, 4, 12), february, true},
        {__LINE__, Local(9, 24, 4, 12), september, false},  // and 30 for September, as month 8: 31
        {__LINE__, Local(9, 25, 4, 12), september, true},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(IsBehind(row.local, row.change), row.behind) << row.line;
}

TEST(TwoTransitions, FindDaylightTime) {
    ZoneRule rule;
    const auto isDaylight = [&](const char* text, const std::tm& local) {
        EXPECT_TRUE(ParseZoneRule(text, &rule)) << text;
        return IsDaylight(local, TwoTransitionsOf(rule, 2010));
    };
    const std::tm june = Local(6, 15, 2, 12), january = Local(1, 15, 5, 12);
    EXPECT_TRUE(isDaylight("EST5EDT", june));
    EXPECT_FALSE(isDaylight("EST5EDT", january));
    EXPECT_FALSE(isDaylight("AEST-10AEDT,M10.1.0,M4.1.0/3", june));
    EXPECT_TRUE(isDaylight("AEST-10AEDT,M10.1.0,M4.1.0/3", january));
    EXPECT_FALSE(isDaylight("JST-9", june));
    EXPECT_FALSE(isDaylight("AAA1BBB1,M3.2.0,M11.1.0", june));  // the same offset
    EXPECT_TRUE(isDaylight("AAA1BBB,J100,J200", june));
    EXPECT_EQ(TwoTransitionsOf(rule, 2012).daylight.day, 10);  // day 100 is 10 April, leap or not
    ASSERT_TRUE(ParseZoneRule("<-02>2<-01>,M3.5.0/-1,M10.5.0/0", &rule));
    const TwoTransitions greenland = TwoTransitionsOf(rule, 2010);
    EXPECT_EQ(greenland.bias, 120);
    EXPECT_EQ(greenland.daylightBias, -60);
    EXPECT_EQ(greenland.daylight.year, 2010);
    EXPECT_EQ(greenland.daylight.month, 3);
    EXPECT_EQ(greenland.daylight.day, 27);
    EXPECT_EQ(greenland.daylight.hour, 23);
}
