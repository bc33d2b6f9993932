// Dates in the form of automation: the number of days since 30 December 1899 in local time, in the
// Gregorian calendar throughout. The fraction is the time of day, also for days before 1899: -1.25
// is 6 o'clock on 29 December 1899.
#pragma once

#include <cstdint>

namespace genutil {

constexpr std::int32_t kOleDayZero = 2415019;  // day number (calendar.h) of 30 December 1899
constexpr std::int32_t kFirstOleDay = -657434, kLastOleDay = 2958465;  // years 100 to 9999

struct OleMoment {
    std::int32_t day;     // since 30 December 1899
    std::int32_t second;  // 0 to 86399
};

// Converts to the nearest second. Returns false if the value is out of range or not a number.
bool ReadOleDate(double days, OleMoment* out);
double WriteOleDate(OleMoment moment);

}  // namespace genutil
