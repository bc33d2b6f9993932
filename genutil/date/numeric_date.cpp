// Dates consisting of numbers with a separator between them, or of eight digits.
#include "genutil/date/free_date.h"
#include "genutil/date/present_year.h"
#include "genutil/locale/locale_access.h"

namespace genutil {

namespace {

// Up to three numbers, with the same separator between them.
struct NumberRow {
    DateNumber numbers[3];
    int count = 0;
    unsigned separator = 0;  // ' ' if only blanks separate them

    bool Read(TextCursor& at, const DateSetting& setting) {
        TextCursor end = at;
        for (;;) {
            TextCursor number = end;
            if (count > 0 && !Separator(number, setting)) break;
            DateNumber& next = numbers[count];
            next.digits = number.Number(&next.value);
            if (next.digits == 0) break;
            if (count > 0 && next.digits <= 2 && IsHour(number, setting, separator)) break;
            end = number;
            if (++count == 3) break;
        }
        if (separator == '.') {  // as in "20.3." and "2010. 3. 20."
            TextCursor dot = end;
            if (dot.Skip('.') && !IsDigitCharacter(dot.Peek())) end = dot;
        }
        at = end;
        return count > 0;
    }

  private:
    bool Separator(TextCursor& at, const DateSetting& setting) {
        unsigned found = at.SkipBlanks() ? ' ' : 0;
        TextCursor own = at;
        if (own.SkipText(LocaleAccess::DateSeparator(setting.locale),
                         setting.locale.GetCodeSet())) {
            found = at.Peek();
            at = own;
        } else if (const unsigned c = at.Peek(); at.SkipAny("/-.,")) {
            found = c;
        }
        at.SkipBlanks();
        if (count > 1 && found != separator) return false;
        separator = found;
        return found != 0;
    }
};

// Interprets three numbers as year, month and day.
Reading Assign(const DateNumber (&n)[3], const DateSetting& setting, int bcAt, DateFound* found) {
    const DateOrder order(setting.locale);
    if (!order.known) return Reading::kNotKnown;
    const int yearAt = bcAt >= 0            ? bcAt
                       : IsYearBySize(n[0]) ? 0
                       : IsYearBySize(n[2]) ? 2
                                            : order.YearAt();
    const DateNumber& first = n[yearAt == 0 ? 1 : 0];
    const DateNumber& second = n[yearAt == 2 ? 1 : 2];
    const bool monthFirst = order.MonthFirst() || (yearAt == 0 && order.YearAt() != 0);
    const DateNumber &month = monthFirst ? first : second, &day = monthFirst ? second : first;
    if (month.digits > 2 || day.digits > 2) return Reading::kInvalid;
    const int year = YearOfNumber(n[yearAt], bcAt >= 0, setting);
    return FinishDate(year, month.value, day.value, true, found);
}

Reading AssignWithoutYear(const DateNumber* n, const DateSetting& setting, DateFound* found) {
    if (IsYearBySize(n[0]) || IsYearBySize(n[1])) return Reading::kNotKnown;
    const DateOrder order(setting.locale);
    if (!order.known) return Reading::kNotKnown;
    const bool monthFirst = order.MonthFirst();
    return FinishDate(PresentYear(), n[!monthFirst].value, n[monthFirst].value, false, found);
}

Reading ReadNumbers(TextCursor& at, const DateSetting& setting, DateFound* found) {
    at.SkipBlanks();
    const bool bcFirst = SkipBcMarker(at);
    at.SkipBlanks();
    NumberRow row;
    if (!row.Read(at, setting)) return Reading::kNotKnown;
    if (row.count == 1) {
        const DateNumber& n = row.numbers[0];
        if (n.digits != 8) return Reading::kNotKnown;
        const int year = YearOfNumber({n.value / 10000, 4}, bcFirst, setting);
        return FinishDate(year, n.value / 100 % 100, n.value % 100, true, found);
    }
    if (row.count == 2) return AssignWithoutYear(row.numbers, setting, found);
    TextCursor behind = at;
    behind.SkipBlanks();
    const bool bcLast = !bcFirst && SkipBcMarker(behind);
    if (bcLast) at = behind;
    const int bcAt = bcFirst || (bcLast && row.numbers[0].digits > 2) ? 0 : bcLast ? 2 : -1;
    return Assign(row.numbers, setting, bcAt, found);
}

}  // namespace

Reading ReadNumericDate(TextCursor& at, const DateSetting& setting, DateFound* found) {
    return WithWeekday(at, setting, found, ReadNumbers);
}

}  // namespace genutil
