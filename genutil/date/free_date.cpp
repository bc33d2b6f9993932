#include "genutil/date/free_date.h"

#include "genutil/date/calendar.h"
#include "genutil/date/date_access.h"
#include "genutil/date/free_time.h"
#include "genutil/locale/locale_access.h"
#include "genutil/date/pattern.h"

namespace genutil {

// -- What the readers share ----------------------------------------------------------------------

Reading FinishDate(int year, int month, int day, bool yearGiven, DateFound* found) {
    if (!DateExists(year, month, day)) return Reading::kInvalid;
    found->date.year = year;
    found->date.month = month - 1;
    found->date.day = day;
    found->yearGiven = yearGiven;
    return Reading::kRead;
}

int YearOfNumber(const DateNumber& number, bool bc, const DateSetting& setting) {
    if (number.value == 0 && (bc || number.digits > 2)) return kNoYear;
    if (bc) return 1 - number.value;
    DateScratch scratch = {};
    scratch.shortYears = setting.shortYears;
    return YearOfDigits(number.value, number.digits, setting.locale, scratch);
}

// Whether a number turned out to be an hour, by what follows it. A time separator that is also the
// one in use between the numbers of a date tells nothing.
static bool IsHour(TextCursor at, const DateSetting& setting, unsigned dateSeparator) {
    if (at.Peek() == ':') return true;
    TextCursor behind = at;
    const CGNString& separator = LocaleAccess::TimeSeparator(setting.locale);
    if (at.Peek() != dateSeparator && behind.SkipText(separator, setting.locale.GetCodeSet()) &&
        IsDigitCharacter(behind.Peek()))
        return true;
    at.SkipBlanks();
    if (SkipHourUnit(at)) return true;
    bool pm;
    if (!SkipMarker(at, setting.locale, &pm)) return false;
    at.SkipBlanks();
    return !IsDigitCharacter(at.Peek());  // else the marker is that of the time behind
}

// -- Numbers -------------------------------------------------------------------------------------

namespace {

enum Part { kYear, kMonth, kDay };

// The order of year, month and day in the short date format.
struct DateOrder {
    Part parts[3];
    bool known;  // there may be no memory to look at the format; then nothing is guessed

    explicit DateOrder(const CLCLocale& locale) {
        const Picture picture(LocaleAccess::DateFormat(locale, 1), PictureLetters::kDate,
                              PictureWalk::kCharacters);
        known = picture.begin() != nullptr;
        bool seen[3] = {};
        int count = 0;
        const auto add = [&](Part part) {
            if (!seen[part]) parts[count++] = part;
            seen[part] = true;
        };
        for (const PictureElement& element : picture) {
            if (element.kind != PictureElement::kRun) continue;
            if (element.letter == 'y') add(kYear);
            if (element.letter == 'M') add(kMonth);
            if (element.letter == 'd' && element.length <= 2) add(kDay);
        }
        for (const Part part : {kYear, kMonth, kDay}) add(part);
    }
    int YearAt() const { return parts[0] == kYear ? 0 : parts[1] == kYear ? 1 : 2; }
    bool MonthFirst() const {
        for (const Part part : parts)
            if (part != kYear) return part == kMonth;
        return true;
    }
};

bool IsYearBySize(const DateNumber& number) {
    return number.digits > 2 || number.value > 31;
}

// Up to three numbers with the same separator between them.
struct NumberRow {
    DateNumber numbers[3];
    int count = 0;
    unsigned separator = 0;  // ' ' for blanks alone

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

// Three numbers as year, month and day.
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

// -- Names ---------------------------------------------------------------------------------------

// What may stand between the parts of a date with a name in it.
void SkipBetween(TextCursor& at, const DateSetting& setting) {
    at.SkipBlanks();
    at.SkipAny(",./-");
    at.SkipBlanks();
    if (SkipFiller(at, setting.locale)) at.SkipBlanks();
    at.Skip('\'');  // of a short year
}

// "1st", "2.", "1er", "3\xBA": what makes a number an ordinal.
void SkipOrdinal(TextCursor& at) {
    for (const char* ending : {"st", "nd", "rd", "th", "er"})
        if (at.SkipWord(ending)) return;
    at.Skip(0xBA);
    at.Skip(0xAA);
    at.Skip('.');
}

// A number that is no hour.
bool SkipNumber(TextCursor& at, const DateSetting& setting, DateNumber* number) {
    TextCursor behind = at;
    number->digits = behind.Number(&number->value);
    if (number->digits == 0) return false;
    if (number->digits <= 2 && IsHour(behind, setting, 0)) return false;
    at = behind;
    return true;
}

// The year behind day and month, if there is one: a date need not have it.
bool SkipYear(TextCursor& at, const DateSetting& setting, int* year) {
    TextCursor text = at;
    SkipBetween(text, setting);
    const bool bcFirst = SkipBcMarker(text);
    text.SkipBlanks();
    DateNumber number;
    if (!SkipNumber(text, setting, &number)) return false;
    at = text;
    text.SkipBlanks();
    const bool bc = bcFirst || SkipBcMarker(text);
    if (bc && !bcFirst) at = text;
    *year = YearOfNumber(number, bc, setting);
    text = at;  // "2010 г."
    text.SkipBlanks();
    if (SkipFiller(text, setting.locale)) at = text;
    return true;
}

struct NamedDate {
    int month = -1;
    DateNumber day = {}, year = {};
};

// Month and day in either order, perhaps behind a year.
bool SkipMonthAndDay(TextCursor& at, const DateSetting& setting, NamedDate* date) {
    SkipFiller(at, setting.locale);
    at.SkipBlanks();
    date->month = SkipMonthName(at, setting.locale);
    if (date->month >= 0) {
        SkipBetween(at, setting);
        if (!SkipNumber(at, setting, &date->day)) return false;
        SkipOrdinal(at);
        return true;
    }
    if (!SkipNumber(at, setting, &date->day)) return false;
    SkipOrdinal(at);
    SkipBetween(at, setting);
    date->month = SkipMonthName(at, setting.locale);
    if (date->month < 0) return false;
    const DateOrder order(setting.locale);
    if (!order.known) return false;
    const bool yearFirst = IsYearBySize(date->day) || order.YearAt() == 0;
    TextCursor behind = at;
    if (!yearFirst) return true;
    SkipBetween(behind, setting);
    date->year = date->day;
    if (!SkipNumber(behind, setting, &date->day) || IsYearBySize(date->day)) {
        date->day = date->year;
        date->year = {};
        return true;
    }
    SkipOrdinal(behind);
    at = behind;
    return true;
}

Reading ReadNames(TextCursor& at, const DateSetting& setting, DateFound* found) {
    at.SkipBlanks();
    NamedDate date;
    if (!SkipMonthAndDay(at, setting, &date)) return Reading::kNotKnown;
    if (date.day.digits > 2) return Reading::kNotKnown;  // "March 2010"
    int year = 0;
    const bool given = date.year.digits != 0 || SkipYear(at, setting, &year);
    if (date.year.digits != 0) year = YearOfNumber(date.year, false, setting);
    if (!given) year = PresentYear();
    return FinishDate(year, date.month + 1, date.day.value, given, found);
}

// -- All together --------------------------------------------------------------------------------

// The date in one of the locale's formats.
Reading ReadFormat(TextCursor& at, long which, const DateSetting& setting, DateFound* found) {
    DateScratch scratch = {};
    scratch.shortYears = setting.shortYears;
    scratch.yearDigits = kNoYearRead;
    DateReader reader(at.At(), setting.locale, scratch);
    if (!reader.LocaleDate(which)) return Reading::kNotKnown;
    // A format takes no digits for the year 00, five for the last one and an hour for a year.
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

Reading ReadNumericDate(TextCursor& at, const DateSetting& setting, DateFound* found) {
    return WithWeekday(at, setting, found, ReadNumbers);
}

Reading ReadNamedDate(TextCursor& at, const DateSetting& setting, DateFound* found) {
    return WithWeekday(at, setting, found, ReadNames);
}

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
        // What a format takes for no date may be one in another order; the readers know.
        if (better || (reading == Reading::kInvalid && best == Reading::kNotKnown)) best = reading;
        if (best == Reading::kRead && end.Peek() == TextCursor::kEnd) break;
    }
    at = end;
    return best;
}

bool NextWord(TextCursor& at, const char** word, std::size_t* length) {
    at.SkipBlanks();
    *word = at.At();
    *length = 0;
    if (at.Peek() == TextCursor::kEnd) return false;
    const bool digits = IsDigitCharacter(at.Peek()), letters = IsLetterCharacter(at.Peek());
    do at.Next();
    while (digits ? IsDigitCharacter(at.Peek()) : letters && IsLetterCharacter(at.Peek()));
    *length = static_cast<std::size_t>(at.At() - *word);
    return true;
}

}  // namespace genutil
