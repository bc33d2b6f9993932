// Reading times of day in the conventions of a locale.
#pragma once

#include "genlocale.h"
#include "genutil/date/date_format.h"

namespace genutil {

enum class TimeReading { kRead, kNotATime, kOutOfRange };

// Reads a whole text as up to three numbers with the locale's separator, markers of AM and PM, and
// unit characters.
// @param time receives the time; otherwise unchanged.
// @param midnight becomes true if the time was written as 12 AM.
TimeReading ReadLocaleTime(const char* text, const CLCLocale& locale, ClockFields* time,
                           bool* midnight);

// Same as above for a member function. The rest is empty if the text was read and the whole text if
// the time is out of range, which *rangeStatus reports. Otherwise it is unchanged.
bool ReadLocaleTime(const CGNString& text, CGNString& rest, ClockFields* time, bool* midnight,
                    std::int32_t* rangeStatus);

// Converts an hour with a marker, or without one (-1), to 0 to 23, after checking the numbers.
TimeReading CheckTime(ClockFields* time, int marker);

}  // namespace genutil
