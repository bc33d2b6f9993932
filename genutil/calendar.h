// Day numbers, dates and seconds of a day, by arithmetic alone. Years are astronomical: 0 is 1 B.C.
//
// Day 0 is 1 January 4713 B.C., day 2440588 is 1 January 1970. The calendar is the Julian one up to
// 4 October 1582 and the Gregorian one from the next day, 15 October 1582.
#pragma once

#include <cstdint>

namespace genutil {

constexpr int kFirstYear = -4712, kLastYear = 9999;
constexpr std::int32_t kDayOf1970 = 2440588;

constexpr std::int32_t kSecondsPerHour = 3600, kSecondsPerDay = 86400;

// Adds two unchecked values. The sum wraps around.
constexpr int WrappingSum(int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}

// Returns the number of seconds since midnight. Values out of range are not normalised, and the sum
// wraps around.
constexpr std::int32_t SecondsOf(int hour, int minute, int second) {
    return static_cast<std::int32_t>(static_cast<unsigned>(hour) * kSecondsPerHour +
                                     static_cast<unsigned>(minute) * 60 +
                                     static_cast<unsigned>(second));
}

struct CalendarDate {
    std::int32_t year, month, day;  // month and day from 1
};

// Returns true if the date exists and its year is from kFirstYear to kLastYear.
bool DateExists(std::int32_t year, std::int32_t month, std::int32_t day);

// Returns the day number of an existing date. For any other date the result is unspecified.
std::int32_t DayNumberOf(std::int32_t year, std::int32_t month, std::int32_t day);

// Returns the date of a day number, from about 380 million days before day 0 to as many after it.
CalendarDate DateOf(std::int32_t dayNumber);

// Returns 1 for Sunday to 7 for Saturday.
int WeekdayOf(std::int32_t dayNumber);

// Dates are computed in years that begin on 1 March, so that the leap day is the last day of its
// year. The number of days before a month is then a linear function of the month, 30.6 days a
// month, and both directions are multiplications by a fraction whose denominator is a power of two.

// The day number of 1 March of Gregorian year 0.
constexpr std::uint32_t kGregorianEpoch = 1721120;

// Returns the date of a day in a March year. Days count from 0 to 365.
inline CalendarDate FromMarchYear(std::int32_t year, std::uint32_t day) {
    const std::uint32_t scaled = 2141 * day + 197913;  // 2141 / 65536 months per day
    const std::uint32_t month = scaled >> 16;          // 3 to 14
    const std::int32_t next = day >= 306;              // January and February
    return {year + next, static_cast<std::int32_t>(month) - 12 * next,
            static_cast<std::int32_t>((scaled & 0xFFFF) / 2141) + 1};
}

// Returns the date of a day counted from 1 March of Gregorian year 0, up to 2^30.
inline CalendarDate FromGregorianDays(std::uint32_t days) {
    const std::uint32_t quarters = 4 * days + 3;
    const std::uint32_t century = quarters / 146097;
    const std::uint32_t inCentury = (quarters % 146097) | 3;  // quarters of days again
    // Division by 1461 through 2^32 / 1461, exact for a century.
    const std::uint64_t product = std::uint64_t{2939745} * inCentury;
    const auto yearOfCentury = static_cast<std::uint32_t>(product >> 32);
    const std::uint32_t dayOfYear = static_cast<std::uint32_t>(product) / 2939745 / 4;
    return FromMarchYear(static_cast<std::int32_t>(100 * century + yearOfCentury), dayOfYear);
}

// Returns the date of a day counted from 1 January 1970. The day must be in the Gregorian calendar.
inline CalendarDate DateSince1970(std::int32_t days) {
    constexpr std::uint32_t k1970 = static_cast<std::uint32_t>(kDayOf1970) - kGregorianEpoch;
    return FromGregorianDays(k1970 + static_cast<std::uint32_t>(days));
}

}  // namespace genutil
