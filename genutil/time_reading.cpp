// CGNTime from text, in the conventions of the global locale.
#include "gentimeofday.h"
#include "genutil/date_access.h"
#include "genutil/time_parse.h"

using namespace genutil;

unsigned char CGNTime::GetTimeFromString(const CGNString& text, CGNString& rest) {
    ClockFields time = {};
    bool midnight = false;
    if (!ReadLocaleTime(text, rest, &time, &midnight, &m_rangeStatus)) return 0;
    m_parsedHour = time.hour;
    m_parsedMinute = time.minute;
    m_parsedSecond = time.second;
    if (midnight) m_hour = 0;
    // Of the time itself: callers copy what was read over it, and compute anew.
    m_secondsFromMidnight = SecondsOf(m_hour, m_minute, m_second);
    return 1;
}
