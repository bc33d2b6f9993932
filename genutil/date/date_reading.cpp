// Reading CGNDate from text, in the formats of the global locale.
#include "gencalendar.h"
#include "genlocale.h"
#include "genutil/calendar.h"
#include "genutil/date/date_parse.h"
#include "genutil/date/free_date.h"
#include "genutil/date/present_year.h"
#include "genutil/date/read_rest.h"
#include "genutil/locale/locale_access.h"
#include "mbutil.h"

using namespace genutil;

// Applies a reader to the scratch values of this object. On success the rest of the text is stored
// in rest.
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
    if (done) TakeRest(reader.At(), rest);
    return done;
}

unsigned char CGNDate::GetDateFromString(const CGNString& text, CGNString& rest) {
    return GetLongDateFromString(text, rest) || GetShortDateFromString(text, rest);
}

unsigned char CGNDate::GetLongDateFromString(const CGNString& text, CGNString& rest) {
    const auto read = [](DateReader& reader) { return reader.LocaleDate(LocaleAccess::kLong); };
    return ReadWith(text, rest, read) || KeepWhole(text, rest);
}

unsigned char CGNDate::GetShortDateFromString(const CGNString& text, CGNString& rest) {
    const auto read = [](DateReader& reader) { return reader.LocaleDate(LocaleAccess::kShort); };
    return ReadWith(text, rest, read) || KeepWhole(text, rest);
}

unsigned char CGNDate::GetDateFromStringUsingFormat(const CGNString& text, CGNString& rest,
                                                    const CGNString& format) {
    const auto read = [&](DateReader& reader) { return reader.Date(format); };
    return ReadWith(text, rest, read) || KeepWhole(text, rest);
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

// Only the result reports the era. The era code of the object is set by reading whole dates.
long CGNDate::GetEmperorFromString(const CGNString& text, CGNString& rest) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    if (!locale) return 0;
    DateScratch scratch = {};
    DateReader reader(text, *locale, scratch);
    // In another calendar the rest is the whole text, whether it names an era or not.
    if (reader.Era() || locale->GetCalendarType() != clcCalendarJapaneseEras) rest = reader.At();
    return scratch.era;
}

void CGNDate::Convert2DigitTo4DigitYear(int twoDigits, int& year) {
    year = YearOfTwoDigits(twoDigits);
}

// -- Free forms ----------------------------------------------------------------------------------

// Applies a reader to a text and stores the result in the scratch values.
template <class Read>
unsigned char CGNDate::ParseWith(const CGNString& text, CGNString& rest, Read read) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    if (!locale) return 0;
    DateFound found = {};
    TextCursor at(text, TextCodeSet());
    const Reading reading = read(at, DateSetting{*locale, TextCodeSet(), false}, &found);
    m_status = reading == Reading::kRead      ? kDateValid
               : reading == Reading::kInvalid ? kDateInvalid
                                              : kDateNotRecognised;
    if (reading != Reading::kRead) return 0;
    m_parsedYear = found.date.year;
    m_parsedMonth = found.date.month;
    m_parsedDay = found.date.day;
    m_era = found.date.era;
    rest = at.At();  // the text may be part of rest itself
    return 1;
}

unsigned char CGNDate::parseDate(const CGNString& text, CGNString& rest) {
    return ParseWith(text, rest, ReadAnyDate);
}
unsigned char CGNDate::parseNumDate(const CGNString& text, CGNString& rest) {
    return ParseWith(text, rest, ReadNumericDate);
}
unsigned char CGNDate::parseCharDate(const CGNString& text, CGNString& rest) {
    return ParseWith(text, rest, ReadNamedDate);
}
unsigned char CGNDate::parseKanjiDate(const CGNString& text, CGNString& rest) {
    return ParseWith(text, rest, ReadKanjiDate);
}

unsigned char CGNDate::extractDateWord(const CGNString& text, CGNString& word, CGNString& rest) {
    return ExtractWord(text, word, rest);
}

unsigned char CGNDate::FromString(const CGNString& text) {
    const auto whole = [](TextCursor& at, const DateSetting& setting, DateFound* found) {
        const Reading reading = ReadAnyDate(at, setting, found);
        at.SkipBlanks();
        const bool left = reading == Reading::kRead && at.Peek() != TextCursor::kEnd;
        return left ? Reading::kNotKnown : reading;
    };
    constexpr unsigned kLongestDate = 255;  // in bytes
    if (text.GetLength() > kLongestDate) {
        m_status = kDateInvalid;
        return 0;
    }
    CGNString rest;
    if (!ParseWith(text, rest, whole)) return 0;
    m_bc = m_parsedYear <= 0;
    m_year = m_bc ? 1 - m_parsedYear : m_parsedYear;
    m_month = m_parsedMonth + 1;
    m_day = m_parsedDay;
    m_weekday = WeekdayOf(DayNumberOf(m_parsedYear, m_month, m_day));
    return 1;
}
