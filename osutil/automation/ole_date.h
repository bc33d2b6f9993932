// Dates as automation has them: a number of days since 30 December 1899 of local time, in the
// Gregorian calendar throughout. The fraction is the time of day, in days before 1899 too: -1.25 is
// 6 o'clock on 29 December 1899.
#pragma once

#include <cstdint>

namespace genutil {

constexpr std::int32_t kOleDayZero = 2415019;  // its day number (calendar.h)
constexpr std::int32_t kFirstOleDay = -657434, kLastOleDay = 2958465;  // years 100 to 9999

struct OleMoment {
    std::int32_t day;     // since 30 December 1899
    std::int32_t second;  // 0 to 86399
};

// To the nearest second; false out of range and for what is no number.
bool ReadOleDate(double days, OleMoment* out);
double WriteOleDate(OleMoment moment);

}  // namespace genutil
