// Writing CGNDate as text, in the conventions of the global locale.
#include "gencalendar.h"
#include "genlocale.h"
#include "genutil/date/date_format.h"
#include "genutil/date/style_text.h"
#include "genutil/locale/locale_access.h"

using namespace genutil;

namespace {

// Replaces out with the text that `write` writes for the date in the global locale.
template <class Write>
unsigned char Component(CGNString& out, Write write) {
    out.Clear();
    TextBuilder builder(out);
    if (const CLCLocale* locale = CLCGlobalLocale::Instance()) write(builder, *locale);
    return 1;
}

}  // namespace

static DateFields FieldsOf(const CGNDate& date, unsigned char yearFirst) {
    const int weekday = date.GetWeekday();
    const bool named = weekday >= 1 && weekday <= 7;
    return {date.GetYear(),
            date.GetMonth(),
            date.GetDay(),
            named ? NameOfWeekday(weekday - 1) : -1,
            date.GetYearBC() != 0,
            yearFirst != 0,
            false};
}

unsigned char CGNDate::AddDateString(long style) {
    TextBuilder builder(m_display);
    DateFields fields = FieldsOf(*this, 0);
    return AppendDate(builder, fields, &m_yearFirst, style, CLCGlobalLocale::Instance());
}

unsigned char CGNDate::FormatForDisplay(long style) {
    m_display.Clear();
    return !IsEmpty() && AddDateString(style);
}

unsigned char CGNDate::FormatForCalendarDisplay(long style) {
    m_display.Clear();
    if (IsEmpty() || !AddDateString(style)) return 0;
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    if (style == LocaleAccess::kLong || !locale) return 1;
    CGNString name;
    DayName(name);
    const char* format = LocaleAccess::DateFormat(*locale, LocaleAccess::kLong);
    bool leads = true;
    for (int i = 0; i < 3 && format[i]; ++i) leads &= format[i] == 'd';
    if (name.IsEmpty()) return 1;
    if (leads) {
        name += ", ";
        name += m_display;
        m_display = name;
    } else {
        m_display += ' ';
        m_display += name;
    }
    return 1;
}

// -- Components ----------------------------------------------------------------------------------

unsigned char CGNDate::DayNum(CGNString& out) const {
    return ReplaceByNumber(out, m_day, 1);
}
unsigned char CGNDate::DayNumLZ(CGNString& out) const {
    return ReplaceByNumber(out, m_day, 2);
}
unsigned char CGNDate::WeekDayNum(CGNString& out) const {
    return ReplaceByNumber(out, m_weekday, 1);
}
unsigned char CGNDate::MonthNum(CGNString& out) const {
    return ReplaceByNumber(out, m_month, 1);
}
unsigned char CGNDate::MonthNumLZ(CGNString& out) const {
    return ReplaceByNumber(out, m_month, 2);
}
unsigned char CGNDate::DayAbbrev(CGNString& out) const {
    const DateFields fields = FieldsOf(*this, 0);
    Component(out, [&](TextBuilder& to, const CLCLocale& locale) {
        WriteDayAbbreviation(to, fields, locale);
    });
    return fields.weekday >= 0;
}
unsigned char CGNDate::DayName(CGNString& out) const {
    const DateFields fields = FieldsOf(*this, 0);
    Component(out,
              [&](TextBuilder& to, const CLCLocale& locale) { WriteDayName(to, fields, locale); });
    return fields.weekday >= 0;
}
unsigned char CGNDate::MonthAbbrev(CGNString& out) const {
    return Component(out, [&](TextBuilder& to, const CLCLocale& locale) {
        WriteMonthAbbreviation(to, FieldsOf(*this, 0), locale);
    });
}
unsigned char CGNDate::MonthName(CGNString& out) const {
    return Component(out, [&](TextBuilder& to, const CLCLocale& locale) {
        WriteMonthName(to, FieldsOf(*this, 0), locale);
    });
}
unsigned char CGNDate::Year4Digit(CGNString& out) const {
    return Component(out, [&](TextBuilder& to, const CLCLocale&) {
        WriteYear(to, FieldsOf(*this, m_yearFirst), 4);
    });
}
unsigned char CGNDate::DateSep(CGNString& out) {
    return Component(out, [](TextBuilder& to, const CLCLocale& locale) {
        to.Append(LocaleAccess::DateSeparator(locale));
    });
}
