// CGNDateTime from text, in the formats of the global locale.
#include "gencalendar.h"
#include "genlocale.h"
#include "genmoment.h"
#include "genutil/date_parse.h"
#include "genutil/locale_access.h"
#include "genutil/time_parse.h"

using namespace genutil;

// Runs a reader over the date of this value; what is left goes to rest if it succeeds.
template <class Read>
unsigned char CGNDateTime::ReadWith(const CGNString& text, CGNString& rest, Read read) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    if (!locale) return 0;
    DateScratch scratch = {m_year, m_month, m_day, 0, kDateValid, true};
    DateReader reader(text, *locale, scratch);
    const bool done = read(reader);
    m_year = scratch.year;
    m_month = scratch.month;
    m_day = scratch.day;
    if (scratch.status == kDateInvalid) m_rangeStatus = 2;
    if (done) rest = reader.At();  // which may be part of rest itself
    return done;
}

unsigned char CGNDateTime::GetDateFromString(const CGNString& text, CGNString& rest) {
    return GetLongDateFromString(text, rest) || GetShortDateFromString(text, rest);
}

unsigned char CGNDateTime::GetLongDateFromString(const CGNString& text, CGNString& rest) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    return locale && GetDateFromStringUsingFormat(
                         text, rest, LocaleAccess::DateFormat(*locale, LocaleAccess::kLong));
}

unsigned char CGNDateTime::GetShortDateFromString(const CGNString& text, CGNString& rest) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    return locale && GetDateFromStringUsingFormat(text, rest, LocaleAccess::DateFormat(*locale, 1));
}

unsigned char CGNDateTime::GetDateFromStringUsingFormat(const CGNString& text, CGNString& rest,
                                                        const CGNString& format) {
    if (ReadWith(text, rest, [&](DateReader& reader) { return reader.Date(format); })) return 1;
    if (&rest != &text) rest = text;
    return 0;
}

unsigned char CGNDateTime::GetMonthNumFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.MonthNumber(); });
}
unsigned char CGNDateTime::GetMonthAbbrevFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.MonthAbbreviation(); });
}
unsigned char CGNDateTime::GetMonthNameFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.MonthName(); });
}
unsigned char CGNDateTime::GetDayNumFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.DayNumber(); });
}
unsigned char CGNDateTime::GetDayAbbrevFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.DayAbbreviation(); });
}
unsigned char CGNDateTime::GetDayNameFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.DayName(); });
}
unsigned char CGNDateTime::Get4DigitYearFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.Year(), true; });
}
unsigned char CGNDateTime::GetDateSepFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.Separator(); });
}
unsigned char CGNDateTime::GetMatchingCharFromString(const CGNString& text, CGNString& rest,
                                                     char c) {
    return ReadWith(text, rest, [c](DateReader& reader) { return reader.Byte(c); });
}

unsigned char CGNDateTime::Get1DigitYearFromString(const CGNString& text, CGNString& rest) {
    return Get4DigitYearFromString(text, rest);
}
unsigned char CGNDateTime::Get2DigitYearFromString(const CGNString& text, CGNString& rest) {
    return Get4DigitYearFromString(text, rest);
}

long CGNDateTime::GetEmperorFromString(const CGNString& text, CGNString& rest) {
    return CGNDate().GetEmperorFromString(text, rest);
}

unsigned char CGNDateTime::GetTimeFromString(const CGNString& text, CGNString& rest) {
    ClockFields time = {};
    bool midnight = false;
    if (!ReadLocaleTime(text, rest, &time, &midnight, &m_rangeStatus)) return 0;
    m_hour = time.hour;
    m_minute = time.minute;
    m_second = time.second;
    return 1;
}
