#include "genutil/date/date_format.h"

#include <cstring>

#include "genutil/date/bc_marker.h"
#include "genutil/locale/locale_access.h"

namespace genutil {

namespace {

using End = TextBuilder::End;

inline void Append(End& out, const CGNString& text) {
    out.Append(text, text.GetLength());
}
// Null is a name with an index out of range.
inline void Append(End& out, const CGNString* text) {
    if (text) Append(out, *text);
}

int NameOfMonth(const DateFields& date) {
    return date.month > 0 ? date.month - 1 : -1;
}

void AppendText(End& out, const char* text) {
    out.Append(text, std::strlen(text));
}

void AppendYear(End& out, const DateFields& date, std::uint32_t digits) {
    if (date.shortYears) {
        const bool whole = digits > 2;
        out.AppendNumber(whole ? date.year : date.year % 100, digits == 1 ? 1 : 2);
        return;
    }
    if (date.bc && date.yearFirst) {
        AppendText(out, BcMarker());
        out.Append(' ');
    }
    out.AppendNumber(date.year, 4);
    if (date.bc && !date.yearFirst) {
        out.Append(' ');
        AppendText(out, BcMarker());
    }
}

// Appends a run of a date pattern. Returns false if it is malformed.
bool AppendDateRun(End& out, char letter, std::uint32_t count, const DateFields& date,
                   const CLCLocale& locale) {
    switch (letter) {
        case 'd':
            if (count <= 2)
                out.AppendNumber(date.day, static_cast<int>(count));
            else if (count == 3)
                Append(out, LocaleAccess::DayAbbreviation(locale, date.weekday));
            else if (count == 4)
                Append(out, LocaleAccess::DayName(locale, date.weekday));
            return count <= 4;
        case 'M':
            if (count <= 2)
                out.AppendNumber(date.month, static_cast<int>(count));
            else if (count == 3)
                Append(out, LocaleAccess::MonthAbbreviation(locale, NameOfMonth(date)));
            else if (count == 4)
                Append(out, LocaleAccess::MonthName(locale, NameOfMonth(date)));
            return count <= 4;
        case 'y':
            if (count == 3 || count > 4) return false;
            AppendYear(out, date, count);
            return true;
        case 'g':  // in pairs, which write nothing, because the year number is sufficient
            return count % 2 == 0;
        default:  // 'W', which also writes nothing
            return count >= 2;
    }
}

void AppendTimeRun(End& out, char letter, std::uint32_t count, const ClockFields& time,
                   const CLCLocale& locale) {
    // Letters are processed in pairs, then the odd one.
    for (; count > 0; count -= count > 1 ? 2 : 1) {
        const int width = count > 1 ? 2 : 1;
        switch (letter) {
            case 'H':
                out.AppendNumber(time.hour, width);
                break;
            case 'h':
                out.AppendNumber(HourOf12(time.hour), width);
                break;
            case 'm':
                out.AppendNumber(time.minute, width);
                break;
            case 's':
                out.AppendNumber(time.second, width);
                break;
            default:  // 't', which alone writes nothing, because formats with it have never shown a
                      // marker
                if (width == 2) Append(out, LocaleAccess::Marker(locale, time.hour >= 12));
        }
    }
}

// Calls `appendRun` for each run and copies the rest. Quoted text without a closing apostrophe is
// dropped.
template <class AppendRun>
bool WritePattern(TextBuilder& builder, const Pattern& pattern, AppendRun appendRun) {
    End out(builder);
    for (const PatternElement& element : pattern) {
        if (element.kind == PatternElement::kRun) {
            if (!appendRun(out, element.letter, element.length)) return false;
        } else if (element.kind != PatternElement::kUnclosed) {
            if (element.length == 1)
                out.Append(*pattern.Text(element));
            else
                out.Append(pattern.Text(element), element.length);
        }
    }
    return true;
}

}  // namespace

void WriteYear(TextBuilder& out, const DateFields& date, std::uint32_t digits) {
    End end(out);
    AppendYear(end, date, digits);
}

static void WriteName(TextBuilder& out, const CGNString* name) {
    if (name) out.Append(*name);
}

void WriteMonthName(TextBuilder& out, const DateFields& date, const CLCLocale& locale) {
    WriteName(out, LocaleAccess::MonthName(locale, NameOfMonth(date)));
}
void WriteMonthAbbreviation(TextBuilder& out, const DateFields& date, const CLCLocale& locale) {
    WriteName(out, LocaleAccess::MonthAbbreviation(locale, NameOfMonth(date)));
}
void WriteDayName(TextBuilder& out, const DateFields& date, const CLCLocale& locale) {
    WriteName(out, LocaleAccess::DayName(locale, date.weekday));
}
void WriteDayAbbreviation(TextBuilder& out, const DateFields& date, const CLCLocale& locale) {
    WriteName(out, LocaleAccess::DayAbbreviation(locale, date.weekday));
}

bool WriteDate(TextBuilder& out, const Pattern& pattern, const DateFields& date,
               const CLCLocale& locale) {
    return WritePattern(out, pattern, [&](End& end, char letter, std::uint32_t count) {
        return AppendDateRun(end, letter, count, date, locale);
    });
}

void WriteTime(TextBuilder& out, const Pattern& pattern, const ClockFields& time,
               const CLCLocale& locale) {
    WritePattern(out, pattern, [&](End& end, char letter, std::uint32_t count) {
        AppendTimeRun(end, letter, count, time, locale);
        return true;
    });
}

}  // namespace genutil
