// CGNTime from text, in the conventions of the global locale.
#include "genlocale.h"
#include "gentimeofday.h"
#include "genutil/date_access.h"
#include "genutil/time_parse.h"

using namespace genutil;

unsigned char CGNTime::GetTimeFromString(const CGNString& text, CGNString& rest) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    if (!locale) return 0;
    ClockFields time = {};
    bool midnight = false;
    const TimeReading reading = ReadLocaleTime(text, *locale, &time, &midnight);
    if (reading == TimeReading::kOutOfRange) {
        m_rangeStatus = 3;
        const CGNString whole(text);
        rest = whole;
    }
    if (reading != TimeReading::kRead) return 0;
    m_parsedHour = time.hour;
    m_parsedMinute = time.minute;
    m_parsedSecond = time.second;
    if (midnight) m_hour = 0;
    // Of the time itself: callers copy what was read over it, and compute anew.
    m_secondsFromMidnight = SecondsOf(m_hour, m_minute, m_second);
    rest.Clear();
    return 1;
}
