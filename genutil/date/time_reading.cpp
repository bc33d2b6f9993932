// Reading CGNTime from text, in the conventions of the global locale.
#include "gentimeofday.h"
#include "genutil/calendar.h"
#include "genutil/date/free_time.h"
#include "genutil/date/read_rest.h"
#include "genutil/date/time_parse.h"

using namespace genutil;

unsigned char CGNTime::GetTimeFromString(const CGNString& text, CGNString& rest) {
    ClockFields time = {};
    bool midnight = false;
    if (!ReadLocaleTime(text, rest, &time, &midnight, &m_rangeStatus)) return 0;
    m_parsedHour = time.hour;
    m_parsedMinute = time.minute;
    m_parsedSecond = time.second;
    if (midnight) m_hour = 0;
    // Only the time itself: callers copy this object over their own and compute the rest again.
    m_secondsFromMidnight = SecondsOf(m_hour, m_minute, m_second);
    return 1;
}

// -- Free forms ----------------------------------------------------------------------------------

TimeReading genutil::ParseTime(const CGNString& text, const CLCLocale& locale, ClockFields* time,
                               std::size_t* length) {
    bool midnight = false;
    *length = text.GetLength();
    if (ReadLocaleTime(text, locale, time, &midnight) == TimeReading::kRead)
        return TimeReading::kRead;
    TextCursor at(text, TextCodeSet());
    const char* const from = at.At();
    TimeFound found;
    const TimeReading reading = ReadTime(at, locale, false, &found);
    if (reading == TimeReading::kRead) *time = found.time;
    *length = static_cast<std::size_t>(at.At() - from);
    return reading;
}

static std::int32_t StatusOf(TimeReading reading) {
    return reading == TimeReading::kRead ? 1 : reading == TimeReading::kOutOfRange ? 3 : 5;
}

unsigned char CGNTime::parseTime(const CGNString& text, CGNString& rest) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    if (!locale) return 0;
    ClockFields time;
    std::size_t length = 0;
    const TimeReading reading = ParseTime(text, *locale, &time, &length);
    m_rangeStatus = StatusOf(reading);
    if (reading != TimeReading::kRead) return 0;
    m_parsedHour = time.hour;
    m_parsedMinute = time.minute;
    m_parsedSecond = time.second;
    rest = static_cast<const char*>(text) + length;
    return 1;
}

unsigned char CGNTime::FromString(const CGNString& text) {
    CGNTime read(*this);
    CGNString rest;
    const bool isTime = read.parseTime(text, rest) != 0;
    m_rangeStatus = read.m_rangeStatus;
    TextCursor left(rest, TextCodeSet());
    left.SkipBlanks();
    if (isTime && left.Peek() != TextCursor::kEnd) m_rangeStatus = 5;
    if (m_rangeStatus != 1) return 0;
    m_hour = m_parsedHour = read.m_parsedHour;
    m_minute = m_parsedMinute = read.m_parsedMinute;
    m_second = m_parsedSecond = read.m_parsedSecond;
    m_secondsFromMidnight = SecondsOf(m_hour, m_minute, m_second);
    return 1;
}

unsigned char CGNTime::extractTimeWord(const CGNString& text, CGNString& word, CGNString& rest) {
    return ExtractWord(text, word, rest);
}

unsigned char CGNTime::FindAMPMMarker(const CGNString& text, long& pm, CGNString& rest) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    TextCursor at(text, TextCodeSet());
    bool isPm = false;
    if (!locale || !SkipMarker(at, *locale, &isPm)) return 0;
    pm = isPm;
    rest = at.At();
    return 1;
}
