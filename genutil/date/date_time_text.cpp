// Writing CGNDateTime as text, in the conventions of the global locale.
#include "gencalendar.h"
#include "genmoment.h"
#include "gentimeofday.h"
#include "genutil/calendar.h"
#include "genutil/date/date_format.h"
#include "genutil/date/style_text.h"
#include "genutil/locale/locale_access.h"

using namespace genutil;

namespace {

DateFields FieldsOf(const CLCLocale* locale, int year, int month, int day, int weekday) {
    const bool eras = locale && locale->GetCalendarType() == clcCalendarJapaneseEras;
    const int shown = eras ? static_cast<int>(locale->EmperorYrFromGregorianYr(year)) : year;
    const bool named = weekday >= 0 && weekday <= 6;
    return {shown, WrappingSum(month, 1), day, named ? NameOfWeekday(weekday) : -1, false, false,
            true};
}

}  // namespace

unsigned char CGNDateTime::AddDateIn(CLCLocale* locale, long style) {
    TextBuilder builder(m_display);
    DateFields fields = FieldsOf(locale, m_year, m_month, m_day, m_weekday);
    return AppendDate(builder, fields, nullptr, style, locale);
}
unsigned char CGNDateTime::AddTimeIn(CLCLocale* locale) {
    TextBuilder builder(m_display);
    AppendTime(builder, {m_hour, m_minute, m_second}, locale);
    return 1;
}

// The blank is written even if the date is missing, and the time never fails.
unsigned char CGNDateTime::FormatIn(CLCLocale* locale, long style) {
    m_display.Clear();
    if (IsEmpty()) return 0;
    TextBuilder builder(m_display);
    DateFields fields = FieldsOf(locale, m_year, m_month, m_day, m_weekday);
    AppendDate(builder, fields, nullptr, style, locale);
    builder.Append(' ');
    AppendTime(builder, {m_hour, m_minute, m_second}, locale);
    return 1;
}

unsigned char CGNDateTime::AddDateString(long style) {
    return AddDateIn(CLCGlobalLocale::Instance(), style);
}
unsigned char CGNDateTime::AddTimeString() {
    return AddTimeIn(CLCGlobalLocale::Instance());
}
unsigned char CGNDateTime::FormatForDisplay(long style) {
    return FormatIn(CLCGlobalLocale::Instance(), style);
}

// Unlike the other functions, it keeps the last text of an empty value.
unsigned char CGNDateTime::FormatDateForDisplay(long style) {
    if (IsEmpty()) return 0;
    m_display.Clear();
    return AddDateString(style);
}

unsigned char CGNDateTime::FormatTimeForDisplay() {
    m_display.Clear();
    return AddTimeString();
}

unsigned char CGNDateTime::Is12Hour() {
    return CGNTime::Is12Hour();
}
unsigned char CGNDateTime::TimeSep(CGNString& out) {
    return CGNTime::TimeSep(out);
}
unsigned char CGNDateTime::DateSep(CGNString& out) {
    return CGNDate::DateSep(out);
}

// Programs that pass a record want its text. They compute the moment with MkTimeTS().
CGNDateTime::CGNDateTime(struct tm* local) : CGNDateTime() {
    TakeFields(*local);
    FormatForDisplay(3);
}

// -- Components ----------------------------------------------------------------------------------

unsigned char CGNDateTime::DayNum(CGNString& out) const {
    return ReplaceByNumber(out, m_day, 1);
}
unsigned char CGNDateTime::DayNumLZ(CGNString& out) const {
    return ReplaceByNumber(out, m_day, 2);
}
unsigned char CGNDateTime::WeekDayNum(CGNString& out) const {
    return ReplaceByNumber(out, WrappingSum(m_weekday, 1), 1);
}
unsigned char CGNDateTime::MonthNum(CGNString& out) const {
    return ReplaceByNumber(out, WrappingSum(m_month, 1), 1);
}
unsigned char CGNDateTime::MonthNumLZ(CGNString& out) const {
    return ReplaceByNumber(out, WrappingSum(m_month, 1), 2);
}

template <class Write>
unsigned char CGNDateTime::Component(CGNString& out, Write write) const {
    out.Clear();
    TextBuilder builder(out);
    if (const CLCLocale* locale = CLCGlobalLocale::Instance())
        write(builder, FieldsOf(locale, m_year, m_month, m_day, m_weekday), *locale);
    return 1;
}

unsigned char CGNDateTime::DayAbbrev(CGNString& out) const {
    return Component(out, WriteDayAbbreviation);
}
unsigned char CGNDateTime::DayName(CGNString& out) const {
    return Component(out, WriteDayName);
}
unsigned char CGNDateTime::MonthAbbrev(CGNString& out) const {
    return Component(out, WriteMonthAbbreviation);
}
unsigned char CGNDateTime::MonthName(CGNString& out) const {
    return Component(out, WriteMonthName);
}
unsigned char CGNDateTime::Year1Digit(CGNString& out) const {
    return Component(out, [](TextBuilder& to, const DateFields& date, const CLCLocale&) {
        WriteYear(to, date, 1);
    });
}
unsigned char CGNDateTime::Year2Digit(CGNString& out) const {
    return Component(out, [](TextBuilder& to, const DateFields& date, const CLCLocale&) {
        WriteYear(to, date, 2);
    });
}
unsigned char CGNDateTime::Year4Digit(CGNString& out) const {
    return Component(out, [](TextBuilder& to, const DateFields& date, const CLCLocale&) {
        WriteYear(to, date, 4);
    });
}

unsigned char CGNDateTime::Emperor(CGNString& out) const {
    out.Clear();
    if (const CLCLocale* locale = CLCGlobalLocale::Instance())
        locale->EmperorFromGregorianYr(m_year, out);
    return 1;
}

unsigned char CGNDateTime::Hour12(CGNString& out) const {
    return ReplaceByNumber(out, HourOf12(m_hour), 1);
}
unsigned char CGNDateTime::Hour12LZ(CGNString& out) const {
    return ReplaceByNumber(out, HourOf12(m_hour), 2);
}
unsigned char CGNDateTime::Hour24(CGNString& out) const {
    return ReplaceByNumber(out, m_hour, 1);
}
unsigned char CGNDateTime::Hour24LZ(CGNString& out) const {
    return ReplaceByNumber(out, m_hour, 2);
}
unsigned char CGNDateTime::Minute(CGNString& out) const {
    return ReplaceByNumber(out, m_minute, 1);
}
unsigned char CGNDateTime::MinuteLZ(CGNString& out) const {
    return ReplaceByNumber(out, m_minute, 2);
}
unsigned char CGNDateTime::Second(CGNString& out) const {
    return ReplaceByNumber(out, m_second, 1);
}
unsigned char CGNDateTime::SecondLZ(CGNString& out) const {
    return ReplaceByNumber(out, m_second, 2);
}
unsigned char CGNDateTime::AMPMMarker(CGNString& out) const {
    return CGNTime(m_hour < 12 ? 0L : 43200L).AMPMMarker(out);
}
