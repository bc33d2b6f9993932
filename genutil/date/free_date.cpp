#include "genutil/date/free_date.h"

#include <initializer_list>

#include "genutil/date/present_year.h"
#include "genutil/locale/locale_access.h"

namespace genutil {

namespace {

// Reads a date in one of the locale's formats.
Reading ReadFormat(TextCursor& at, long which, const DateSetting& setting, DateFound* found) {
    DateScratch scratch = {};
    scratch.shortYears = setting.shortYears;
    scratch.yearDigits = kNoYearRead;
    DateReader reader(at.At(), setting.locale, scratch);
    if (!reader.LocaleDate(which)) return Reading::kNotKnown;
    // A format also matches no digits as the year 00, five digits for the last year and an hour for
    // a year.
    const int digits = scratch.yearDigits;
    const bool given = digits != kNoYearRead;
    if (given && (digits < 1 || digits > 4)) return Reading::kNotKnown;
    at.MoveTo(reader.At());
    if (given && digits <= 2 && IsHour(at, setting, 0)) return Reading::kNotKnown;
    const int year = !given ? PresentYear() : scratch.year == 0 ? kNoYear : scratch.year;
    found->date.era = scratch.era;
    return FinishDate(year, scratch.month + 1, scratch.day, given, found);
}

Reading ReadLongFormat(TextCursor& at, const DateSetting& setting, DateFound* found) {
    return ReadFormat(at, LocaleAccess::kLong, setting, found);
}
Reading ReadShortFormat(TextCursor& at, const DateSetting& setting, DateFound* found) {
    return ReadFormat(at, LocaleAccess::kShort, setting, found);
}

}  // namespace

bool ReadDateInFormat(TextCursor& at, const DateSetting& setting, DateFound* found) {
    for (const auto read : {ReadLongFormat, ReadShortFormat}) {
        TextCursor text = at;
        if (read(text, setting, found) != Reading::kRead || !found->yearGiven) continue;
        at = text;
        return true;
    }
    return false;
}

Reading ReadAnyDate(TextCursor& at, const DateSetting& setting, DateFound* found) {
    Reading best = Reading::kNotKnown;
    TextCursor end = at;
    for (const auto read :
         {ReadLongFormat, ReadShortFormat, ReadKanjiDate, ReadNumericDate, ReadNamedDate}) {
        TextCursor text = at;
        DateFound date = {};
        const Reading reading = read(text, setting, &date);
        const bool better = reading == Reading::kRead && text.At() > end.At();
        if (better) {
            end = text;
            *found = date;
        }
        // A text that is an invalid date in a format may be a date in another order, which the
        // readers decide.
        if (better || (reading == Reading::kInvalid && best == Reading::kNotKnown)) best = reading;
        if (best == Reading::kRead && end.Peek() == TextCursor::kEnd) break;
    }
    at = end;
    return best;
}

}  // namespace genutil
