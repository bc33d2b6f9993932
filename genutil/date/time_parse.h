// Times of day read in the conventions of a locale.
#pragma once

#include "genlocale.h"
#include "genutil/date/date_format.h"

namespace genutil {

enum class TimeReading { kRead, kNotATime, kOutOfRange };

// Reads a whole text as up to three numbers with the locale's separator, markers for AM and PM and
// unit characters. *time, which is left alone otherwise, receives the time; *midnight becomes true
// where it was written as 12 AM.
TimeReading ReadLocaleTime(const char* text, const CLCLocale& locale, ClockFields* time,
                           bool* midnight);

// The same for a member function: nothing is left of a text that was read, all of one that is out
// of range, which *rangeStatus tells, and otherwise rest stays.
bool ReadLocaleTime(const CGNString& text, CGNString& rest, ClockFields* time, bool* midnight,
                    std::int32_t* rangeStatus);

// Puts an hour with a marker, or without (-1) into 0 to 23; numbers are checked before.
TimeReading CheckTime(ClockFields* time, int marker);

}  // namespace genutil
