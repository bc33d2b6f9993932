#include "genutil/date_format.h"

#include "genutil/bc_marker.h"
#include "genutil/locale_access.h"

namespace genutil {

namespace {

void WriteText(TextBuilder& out, const CGNString* text) {
    if (text) out.Append(*text);
}

int NameOfMonth(const DateFields& date) {
    return date.month > 0 ? date.month - 1 : -1;
}

// A run of a date picture; false when it is malformed.
bool WriteDateRun(TextBuilder& out, char letter, std::uint32_t count, const DateFields& date,
                  const CLCLocale& locale) {
    switch (letter) {
        case 'd':
            if (count <= 2)
                out.AppendNumber(date.day, static_cast<int>(count));
            else if (count == 3)
                WriteDayAbbreviation(out, date, locale);
            else if (count == 4)
                WriteDayName(out, date, locale);
            return count <= 4;
        case 'M':
            if (count <= 2)
                out.AppendNumber(date.month, static_cast<int>(count));
            else if (count == 3)
                WriteMonthAbbreviation(out, date, locale);
            else if (count == 4)
                WriteMonthName(out, date, locale);
            return count <= 4;
        case 'y':
            if (count == 3 || count > 4) return false;
            WriteYear(out, date, count);
            return true;
        case 'g':  // taken in pairs, which write nothing: the number of the year says enough
            return count % 2 == 0;
        default:  // 'W', which writes nothing either
            return count >= 2;
    }
}

void WriteTimeRun(TextBuilder& out, char letter, std::uint32_t count, const ClockFields& time,
                  const CLCLocale& locale) {
    // Taken in pairs, and then the odd one.
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
            default:  // 't', which alone writes nothing: formats with it have always shown no
                      // marker
                if (width == 2) WriteMarker(out, time, locale);
        }
    }
}

// Calls `writeRun` for each run and copies the rest; quoted text that is not closed is dropped.
template <class WriteRun>
bool WritePicture(TextBuilder& out, const Picture& picture, WriteRun writeRun) {
    for (const PictureElement& element : picture) {
        if (element.kind == PictureElement::kRun) {
            if (!writeRun(element.letter, element.length)) return false;
        } else if (element.kind != PictureElement::kUnclosed) {
            if (element.length == 1)
                out.Append(*picture.Text(element));
            else
                out.Append(picture.Text(element), element.length);
        }
    }
    return true;
}

}  // namespace

void WriteYear(TextBuilder& out, const DateFields& date, std::uint32_t digits) {
    if (date.shortYears) {
        const bool whole = digits > 2;
        out.AppendNumber(whole ? date.year : date.year % 100, digits == 1 ? 1 : 2);
        return;
    }
    if (date.bc && date.yearFirst) {
        out.Append(BcMarker());
        out.Append(' ');
    }
    out.AppendNumber(date.year, 4);
    if (date.bc && !date.yearFirst) {
        out.Append(' ');
        out.Append(BcMarker());
    }
}

void WriteMonthName(TextBuilder& out, const DateFields& date, const CLCLocale& locale) {
    WriteText(out, LocaleAccess::MonthName(locale, NameOfMonth(date)));
}
void WriteMonthAbbreviation(TextBuilder& out, const DateFields& date, const CLCLocale& locale) {
    WriteText(out, LocaleAccess::MonthAbbreviation(locale, NameOfMonth(date)));
}
void WriteDayName(TextBuilder& out, const DateFields& date, const CLCLocale& locale) {
    WriteText(out, LocaleAccess::DayName(locale, date.weekday));
}
void WriteDayAbbreviation(TextBuilder& out, const DateFields& date, const CLCLocale& locale) {
    WriteText(out, LocaleAccess::DayAbbreviation(locale, date.weekday));
}
void WriteMarker(TextBuilder& out, const ClockFields& time, const CLCLocale& locale) {
    out.Append(LocaleAccess::Marker(locale, time.hour >= 12));
}

bool WriteDate(TextBuilder& out, const Picture& picture, const DateFields& date,
               const CLCLocale& locale) {
    return WritePicture(out, picture, [&](char letter, std::uint32_t count) {
        return WriteDateRun(out, letter, count, date, locale);
    });
}

void WriteTime(TextBuilder& out, const Picture& picture, const ClockFields& time,
               const CLCLocale& locale) {
    WritePicture(out, picture, [&](char letter, std::uint32_t count) {
        WriteTimeRun(out, letter, count, time, locale);
        return true;
    });
}

}  // namespace genutil
