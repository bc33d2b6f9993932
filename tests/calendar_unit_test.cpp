// Day numbers, compared with counting the days one by one.
#include <gtest/gtest.h>

#include "genutil/calendar.h"

using namespace genutil;

TEST(Calendar, AgreesWithCountingDays) {
    int year = kFirstYear, month = 1, day = 1, weekday = 2, faults = 0;
    std::int32_t number = 0;
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const auto isLeap = [](int y) { return y % 4 == 0 && (y < 1583 || y % 100 || y % 400 == 0); };
    for (; year <= kLastYear; ++number) {
        const CalendarDate date = DateOf(number);
        faults += date.year != year || date.month != month || date.day != day;
        faults += DayNumberOf(year, month, day) != number;
        faults += !DateExists(year, month, day) || WeekdayOf(number) != weekday;
        const int last = kDays[month - 1] + (month == 2 && isLeap(year));
        faults += DateExists(year, month, last + 1);
        weekday = weekday % 7 + 1;
        ++day;
        if (year == 1582 && month == 10 && day == 5) day = 15;
        if (day <= last) continue;
        day = 1;
        year += month == 12;
        month = month % 12 + 1;
    }
    EXPECT_EQ(faults, 0);
    EXPECT_EQ(number, 5373485);
    EXPECT_EQ(DateOf(-1).year, -4713);
    EXPECT_EQ(WeekdayOf(-1), 1);
    DayNumberOf(INT32_MIN, INT32_MIN, INT32_MAX);  // any number, but no overflow
    DateOf(INT32_MIN);
}
