// The value of CGNTime, and its text in the conventions of the global locale.
#include "genlocale.h"
#include "gentimeofday.h"
#include "genutil/calendar.h"
#include "genutil/date/date_format.h"
#include "genutil/date/style_text.h"
#include "genutil/locale/locale_access.h"

using namespace genutil;

// Programs hold such objects by value.
static_assert(sizeof(void*) != 4 || sizeof(CGNTime) == 8 * 4 + sizeof(CGNString));

namespace {

enum RangeStatus { kValid = 1, kOutOfRange = 3 };

}  // namespace

CGNTime::CGNTime() : CGNTime(0L) {}

CGNTime::CGNTime(long secondsFromMidnight)
    : m_hour(0),
      m_minute(0),
      m_second(0),
      m_parsedHour(0),
      m_parsedMinute(0),
      m_parsedSecond(0),
      m_secondsFromMidnight(0),
      m_rangeStatus(0) {
    if (secondsFromMidnight < 0) return;
    if (secondsFromMidnight >= kSecondsPerDay) secondsFromMidnight = kSecondsPerDay - 1;
    m_secondsFromMidnight = static_cast<std::int32_t>(secondsFromMidnight);
    m_hour = m_secondsFromMidnight / kSecondsPerHour;
    m_minute = m_secondsFromMidnight / 60 % 60;
    m_second = m_secondsFromMidnight % 60;
}

CGNTime::CGNTime(int hour, int minute, int second) : CGNTime(0L) {
    m_hour = hour;
    m_minute = minute;
    m_second = second;
    m_secondsFromMidnight = SecondsOf(hour, minute, second);
    FormatForDisplay();
}

CGNTime::CGNTime(const CGNTime& other) = default;
CGNTime& CGNTime::operator=(const CGNTime& other) = default;
CGNTime::~CGNTime() = default;

unsigned char CGNTime::IsEmpty() const {
    return m_hour == 0 && m_minute == 0 && m_second == 0 && m_secondsFromMidnight == 0;
}

void CGNTime::Empty() {
    m_display.Empty();
    m_hour = m_minute = m_second = 0;
    m_parsedHour = m_parsedMinute = m_parsedSecond = 0;
    m_secondsFromMidnight = 0;
}

unsigned char CGNTime::VerifyTime(int hour, int minute, int second) {
    const bool valid =
        hour >= 0 && hour <= 23 && minute >= 0 && minute <= 59 && second >= 0 && second <= 59;
    m_rangeStatus = valid ? kValid : kOutOfRange;
    return valid;
}

// -- Text ----------------------------------------------------------------------------------------

unsigned char CGNTime::FormatForDisplay() {
    m_display.Clear();
    return AddTimeString();
}

unsigned char CGNTime::AddTimeString() {
    TextBuilder builder(m_display);
    AppendTime(builder, {m_hour, m_minute, m_second}, CLCGlobalLocale::Instance());
    return 1;
}

unsigned char CGNTime::Is12Hour() {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    return locale && !locale->Is24Hour();
}

unsigned char CGNTime::TimeSep(CGNString& out) {
    if (const CLCLocale* locale = CLCGlobalLocale::Instance())
        out = LocaleAccess::TimeSeparator(*locale);
    return 1;
}

void CGNTime::GetMinMaxTimeRange(CGNString& earliest, CGNString& latest) {
    CGNTime(0, 0, 0).GetDisplayBuffer(earliest);
    CGNTime(23, 59, 59).GetDisplayBuffer(latest);
}

unsigned char CGNTime::Hour12(CGNString& out) const {
    return ReplaceByNumber(out, HourOf12(m_hour), 1);
}
unsigned char CGNTime::Hour12LZ(CGNString& out) const {
    return ReplaceByNumber(out, HourOf12(m_hour), 2);
}
unsigned char CGNTime::Hour24(CGNString& out) const {
    return ReplaceByNumber(out, m_hour, 1);
}
unsigned char CGNTime::Hour24LZ(CGNString& out) const {
    return ReplaceByNumber(out, m_hour, 2);
}
unsigned char CGNTime::Minute(CGNString& out) const {
    return ReplaceByNumber(out, m_minute, 1);
}
unsigned char CGNTime::MinuteLZ(CGNString& out) const {
    return ReplaceByNumber(out, m_minute, 2);
}
unsigned char CGNTime::Second(CGNString& out) const {
    return ReplaceByNumber(out, m_second, 1);
}
unsigned char CGNTime::SecondLZ(CGNString& out) const {
    return ReplaceByNumber(out, m_second, 2);
}
unsigned char CGNTime::AMPMMarker(CGNString& out) const {
    if (const CLCLocale* locale = CLCGlobalLocale::Instance())
        out = LocaleAccess::Marker(*locale, m_hour >= 12);
    return 1;
}
