#include "genutil/calendar.h"

namespace genutil {

namespace {

// The day number of 1 March of Julian year 0.
constexpr std::uint32_t kJulianEpoch = 1721118;
constexpr std::int32_t kFirstGregorianDay = 2299161;

// Years are increased by this number, a multiple of both calendars' cycles, so that they are
// positive.
constexpr std::uint32_t kShiftedYears = 400 * 2621;
constexpr std::uint32_t kShiftedJulianDays = kShiftedYears / 4 * 1461;

// Returns true for a date from the start of the Gregorian calendar on. The parts must be in range.
bool IsGregorian(std::int32_t year, std::int32_t month, std::int32_t day) {
    if (year != 1582) return year > 1582;
    return month > 10 || (month == 10 && day >= 15);
}

bool IsLeap(std::int32_t year) {
    const bool byFour = (year & 3) == 0;
    return year > 1582 ? byFour && (year % 100 != 0 || (year & 15) == 0) : byFour;
}

// Returns the number of days before a month within its March year. Months count from 3 (March) to
// 14 (February).
constexpr std::uint32_t DaysBeforeMonth(std::uint32_t month) {
    return (979 * month - 2919) >> 5;  // 30.6 days a month
}
static_assert(DaysBeforeMonth(3) == 0 && DaysBeforeMonth(4) == 31 && DaysBeforeMonth(14) == 337);

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
    // Unsigned, so that dates that do not exist wrap around without undefined behaviour.
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

int WeekdayOf(std::int32_t dayNumber) {
    const std::int32_t day = dayNumber % 7;  // 0 for Monday
    return (day < 0 ? day + 8 : day + 1) % 7 + 1;
}

}  // namespace genutil
