// CGNDate from text, in the formats of the global locale.
#include "gencalendar.h"
#include "genlocale.h"
#include "genutil/date_parse.h"
#include "genutil/locale_access.h"

using namespace genutil;

namespace {

// The text that is left, which may be part of the string that receives it.
void Leave(CGNString& rest, const char* left) {
    const CGNString copy(left);
    rest = copy;
}

}  // namespace

// Runs a reader over the scratch values of this object; what is left goes to rest if it succeeds.
template <class Read>
unsigned char CGNDate::ReadWith(const CGNString& text, CGNString& rest, Read read) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    if (!locale) return 0;
    DateScratch scratch = {m_parsedYear, m_parsedMonth, m_parsedDay, m_era, m_status, false};
    DateReader reader(text, *locale, scratch);
    const bool done = read(reader);
    m_parsedYear = scratch.year;
    m_parsedMonth = scratch.month;
    m_parsedDay = scratch.day;
    m_era = scratch.era;
    m_status = scratch.status;
    if (done) Leave(rest, reader.At());
    return done;
}

unsigned char CGNDate::GetDateFromString(const CGNString& text, CGNString& rest) {
    const CGNString whole(text);
    return GetLongDateFromString(whole, rest) || GetShortDateFromString(whole, rest);
}

unsigned char CGNDate::GetLongDateFromString(const CGNString& text, CGNString& rest) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    return locale && GetDateFromStringUsingFormat(
                         text, rest, LocaleAccess::DateFormat(*locale, LocaleAccess::kLong));
}

unsigned char CGNDate::GetShortDateFromString(const CGNString& text, CGNString& rest) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    return locale && GetDateFromStringUsingFormat(text, rest, LocaleAccess::DateFormat(*locale, 1));
}

unsigned char CGNDate::GetDateFromStringUsingFormat(const CGNString& text, CGNString& rest,
                                                    const CGNString& format) {
    const CGNString whole(text);
    if (ReadWith(whole, rest, [&](DateReader& reader) { return reader.Date(format); })) return 1;
    rest = whole;
    return 0;
}

unsigned char CGNDate::GetMonthNumFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.MonthNumber(); });
}
unsigned char CGNDate::GetMonthAbbrevFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.MonthAbbreviation(); });
}
unsigned char CGNDate::GetMonthNameFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.MonthName(); });
}
unsigned char CGNDate::GetDayNumFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.DayNumber(); });
}
unsigned char CGNDate::GetDayAbbrevFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.DayAbbreviation(); });
}
unsigned char CGNDate::GetDayNameFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.DayName(); });
}
unsigned char CGNDate::Get4DigitYearFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.Year(), true; });
}
unsigned char CGNDate::GetDateSepFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.Separator(); });
}
unsigned char CGNDate::GetMatchingCharFromString(const CGNString& text, CGNString& rest, char c) {
    return ReadWith(text, rest, [c](DateReader& reader) { return reader.Byte(c); });
}

// Only the result tells of the era: the code of the object is set by the reading of whole dates.
long CGNDate::GetEmperorFromString(const CGNString& text, CGNString& rest) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    if (!locale) return 0;
    DateScratch scratch = {};
    const CGNString whole(text);
    DateReader reader(whole, *locale, scratch);
    if (reader.Era()) Leave(rest, reader.At());
    return scratch.era;
}
