// Day numbers, dates and seconds of a day, by arithmetic alone. Years are astronomical: 0 is 1 B.C.
//
// Day 0 is 1 January 4713 B.C., day 2440588 is 1 January 1970. The calendar is the Julian one up to
// 4 October 1582 and the Gregorian one from the day after, 15 October 1582.
#pragma once

#include <cstdint>

namespace genutil {

constexpr int kFirstYear = -4712, kLastYear = 9999;
constexpr std::int32_t kDayOf1970 = 2440588;

constexpr std::int32_t kSecondsPerHour = 3600, kSecondsPerDay = 86400;

// A sum of values that nobody checked, which wraps around.
constexpr int WrappingSum(int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}

// Seconds from midnight. Values out of range are taken as they are, and wrap around.
constexpr std::int32_t SecondsOf(int hour, int minute, int second) {
    return static_cast<std::int32_t>(static_cast<unsigned>(hour) * kSecondsPerHour +
                                     static_cast<unsigned>(minute) * 60 +
                                     static_cast<unsigned>(second));
}

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

// Dates are computed in years that begin on 1 March, so that the leap day is the last: then the
// days before a month are a linear function of it, 30.6 days a month, and both ways are
// multiplications by a fraction with a power of two below.

// Day number of 1 March of Gregorian year 0.
constexpr std::uint32_t kGregorianEpoch = 1721120;

// From a March year and the day in it, 0 to 365.
inline CalendarDate FromMarchYear(std::int32_t year, std::uint32_t day) {
    const std::uint32_t scaled = 2141 * day + 197913;  // 2141 / 65536 is a month in days
    const std::uint32_t month = scaled >> 16;          // 3 to 14
    const std::int32_t next = day >= 306;              // January and February
    return {year + next, static_cast<std::int32_t>(month) - 12 * next,
            static_cast<std::int32_t>((scaled & 0xFFFF) / 2141) + 1};
}

// Days since 1 March of Gregorian year 0, up to 2^30.
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

// The date of a day counted from 1 January 1970, for days of the Gregorian calendar.
inline CalendarDate DateSince1970(std::int32_t days) {
    constexpr std::uint32_t k1970 = static_cast<std::uint32_t>(kDayOf1970) - kGregorianEpoch;
    return FromGregorianDays(k1970 + static_cast<std::uint32_t>(days));
}

}  // namespace genutil
