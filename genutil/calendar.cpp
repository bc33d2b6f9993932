// Dates are computed in years that begin on 1 March, so that the leap day is the last: then the
// days before a month are a linear function of it, 30.6 days a month, and both ways are
// multiplications by a fraction with a power of two below.
#include "genutil/calendar.h"

namespace genutil {

namespace {

// Day numbers of 1 March of year 0.
constexpr std::uint32_t kJulianEpoch = 1721118, kGregorianEpoch = 1721120;
constexpr std::int32_t kFirstGregorianDay = 2299161;

// Years are moved up by this many, so that they are positive; whole cycles of both calendars.
constexpr std::uint32_t kShiftedYears = 400 * 2621;
constexpr std::uint32_t kShiftedJulianDays = kShiftedYears / 4 * 1461;

// Calendar order of dates whose parts are in range.
bool IsGregorian(std::int32_t year, std::int32_t month, std::int32_t day) {
    if (year != 1582) return year > 1582;
    return month > 10 || (month == 10 && day >= 15);
}

bool IsLeap(std::int32_t year) {
    const bool byFour = (year & 3) == 0;
    return year > 1582 ? byFour && (year % 100 != 0 || (year & 15) == 0) : byFour;
}

// Days before a month within its March year, months from 3 (March) to 14 (February).
constexpr std::uint32_t DaysBeforeMonth(std::uint32_t month) {
    return (979 * month - 2919) >> 5;  // 30.6 a month
}
static_assert(DaysBeforeMonth(3) == 0 && DaysBeforeMonth(4) == 31 && DaysBeforeMonth(14) == 337);

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

CalendarDate FromJulianDays(std::uint32_t days) {
    const std::uint32_t quarters = 4 * (days + kShiftedJulianDays) + 3;
    const auto year = static_cast<std::int32_t>(quarters / 1461 - kShiftedYears);
    return FromMarchYear(year, quarters % 1461 / 4);
}

}  // namespace

bool DateExists(std::int32_t year, std::int32_t month, std::int32_t day) {
    static constexpr std::uint8_t kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (year < kFirstYear || year > kLastYear || month < 1 || month > 12 || day < 1) return false;
    if (year == 1582 && month == 10 && day > 4 && day < 15) return false;
    return day <= kDays[month - 1] + (month == 2 && IsLeap(year));
}

std::int32_t DayNumberOf(std::int32_t year, std::int32_t month, std::int32_t day) {
    // Unsigned, so that dates that do not exist wrap around and do no harm.
    const bool early = month <= 2;
    const std::uint32_t y = static_cast<std::uint32_t>(year) - early + kShiftedYears;
    const std::uint32_t m = static_cast<std::uint32_t>(month) + (early ? 12 : 0);
    const std::uint32_t inYear = DaysBeforeMonth(m) + static_cast<std::uint32_t>(day) - 1;
    const std::uint32_t julian = 1461 * y / 4 + inYear;
    if (!IsGregorian(year, month, day))
        return static_cast<std::int32_t>(julian - kShiftedJulianDays + kJulianEpoch);
    const std::uint32_t century = y / 100;
    constexpr std::uint32_t kShiftedDays = kShiftedYears / 400 * 146097;
    return static_cast<std::int32_t>(julian - century + century / 4 - kShiftedDays +
                                     kGregorianEpoch);
}

CalendarDate DateOf(std::int32_t dayNumber) {
    const auto days = static_cast<std::uint32_t>(dayNumber);
    return dayNumber >= kFirstGregorianDay ? FromGregorianDays(days - kGregorianEpoch)
                                           : FromJulianDays(days - kJulianEpoch);
}

CalendarDate DateSince1970(std::int32_t days) {
    constexpr std::uint32_t k1970 = static_cast<std::uint32_t>(kDayOf1970) - kGregorianEpoch;
    return FromGregorianDays(k1970 + static_cast<std::uint32_t>(days));
}

int WeekdayOf(std::int32_t dayNumber) {
    const std::int32_t day = dayNumber % 7;  // 0 is Monday
    return (day < 0 ? day + 8 : day + 1) % 7 + 1;
}

}  // namespace genutil
