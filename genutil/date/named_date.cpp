// Dates with the name of a month.
#include <initializer_list>

#include "genutil/date/free_date.h"
#include "genutil/date/present_year.h"

namespace genutil {

namespace {

// Skips text that may separate the parts of a date with a name.
void SkipBetween(TextCursor& at, const DateSetting& setting) {
    at.SkipBlanks();
    at.SkipAny(",./-");
    at.SkipBlanks();
    if (SkipFiller(at, setting.locale)) at.SkipBlanks();
    at.Skip('\'');  // before a short year
}

// Skips the ending of an ordinal number: "1st", "2.", "1er", "3\xBA".
void SkipOrdinal(TextCursor& at) {
    for (const char* ending : {"st", "nd", "rd", "th", "er"})
        if (at.SkipWord(ending)) return;
    at.Skip(0xBA);
    at.Skip(0xAA);
    at.Skip('.');
}

// Skips a number that is not an hour.
bool SkipNumber(TextCursor& at, const DateSetting& setting, DateNumber* number) {
    TextCursor behind = at;
    number->digits = behind.Number(&number->value);
    if (number->digits == 0) return false;
    if (number->digits <= 2 && IsHour(behind, setting, 0)) return false;
    at = behind;
    return true;
}

// Skips the year after day and month, if there is one. A date may have none.
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

// Skips month and day in either order, which may follow a year.
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

}  // namespace

Reading ReadNamedDate(TextCursor& at, const DateSetting& setting, DateFound* found) {
    return WithWeekday(at, setting, found, ReadNames);
}

}  // namespace genutil
