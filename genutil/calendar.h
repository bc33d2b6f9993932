// Day numbers and dates, by arithmetic alone. Years are astronomical: 0 is 1 B.C.
//
// Day 0 is 1 January 4713 B.C., day 2440588 is 1 January 1970. The calendar is the Julian one up to
// 4 October 1582 and the Gregorian one from the day after, 15 October 1582.
#pragma once

#include <cstdint>

namespace genutil {

constexpr int kFirstYear = -4712, kLastYear = 9999;
constexpr std::int32_t kDayOf1970 = 2440588;

struct CalendarDate {
    std::int32_t year, month, day;  // month and day from 1
};

// Whether there is such a day in the years from kFirstYear to kLastYear.
bool DateExists(std::int32_t year, std::int32_t month, std::int32_t day);

// The day number of a date that exists; of any other some number.
std::int32_t DayNumberOf(std::int32_t year, std::int32_t month, std::int32_t day);

// The date of a day number from about 380 million before day 0 to as many behind it.
CalendarDate DateOf(std::int32_t dayNumber);

// 1 is Sunday, 7 Saturday.
int WeekdayOf(std::int32_t dayNumber);

// The date of a day counted from 1 January 1970, for days of the Gregorian calendar.
CalendarDate DateSince1970(std::int32_t days);

}  // namespace genutil
