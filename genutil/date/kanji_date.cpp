// Dates with a unit after each number, as in Japan, China and Korea, and dates in Japanese eras.
#include "genutil/calendar.h"
#include "genutil/date/free_date.h"
#include "genutil/date/present_year.h"
#include "genutil/locale/locale_access.h"
#include "mbutil.h"

namespace genutil {

namespace {

constexpr unsigned kOrigin = 0x5143;  // "first", for the first year of an era

struct Unit {
    unsigned japanese, korean;
};
constexpr Unit kYearUnit = {0x5E74, 0xB144}, kMonthUnit = {0x6708, 0xC6D4},
               kDayUnit = {0x65E5, 0xC77C};

bool SkipUnit(TextCursor& at, const Unit& unit) {
    TextCursor text = at;
    text.SkipBlanks();
    if (!text.Skip(unit.japanese) && !text.Skip(unit.korean)) return false;
    at = text;
    return true;
}

// Returns the value of a numeral from 0 to 9, 10 for "ten", or -1 for another character.
int KanjiNumeral(unsigned c) {
    constexpr unsigned kNumerals[] = {0x3007, 0x4E00, 0x4E8C, 0x4E09, 0x56DB, 0x4E94,
                                      0x516D, 0x4E03, 0x516B, 0x4E5D, 0x5341};
    for (int i = 0; i <= 10; ++i)
        if (kNumerals[i] == c) return i;
    return -1;
}

// Skips digits, or positional numerals or numerals with tens: 二〇一〇, 二十一.
bool SkipNumber(TextCursor& at, DateNumber* number) {
    at.SkipBlanks();
    number->digits = at.Number(&number->value);
    if (number->digits > 0) return true;
    int tens = 0;
    for (int numeral; (numeral = KanjiNumeral(at.Peek())) >= 0 && number->digits < 5; at.Next()) {
        ++number->digits;
        if (numeral < 10) {
            number->value = number->value * 10 + numeral;
            continue;
        }
        if (tens != 0 || number->value > 9) return false;
        tens = number->value == 0 ? 10 : number->value * 10;
        number->value = 0;
    }
    if (tens != 0 && number->value > 9) return false;
    if (tens != 0) number->digits = 2;
    number->value += tens;
    return number->digits > 0;
}

// Returns the letter that denotes an era, or 0 if there is none.
unsigned LetterOfEra(const CGNString& name) {
    switch (TextCursor(name, mbShiftJis).Peek()) {
        case 0x660E:  // Meiji
            return 'm';
        case 0x5927:  // Taisho
            return 't';
        case 0x662D:  // Showa
            return 's';
        case 0x5E73:  // Heisei
            return 'h';
        case 0x4EE4:  // Reiwa
            return 'r';
        default:
            return 0;
    }
}

// Skips the name of an era or, in a Japanese locale, its letter. Returns its index.
int SkipEra(TextCursor& at, const CLCLocale& locale) {
    for (int i = 0; const CEmperor* era = LocaleAccess::Era(locale, i); ++i) {
        if (era->IsEmpty()) break;
        CGNString name;
        era->Emperor(name);
        if (at.SkipText(name, mbShiftJis)) return i;
        TextCursor behind = at;
        if (!locale.LocaleIsJapanese() || !behind.Skip(LetterOfEra(name))) continue;
        behind.Skip('.');
        if (!IsDigitCharacter(behind.Peek())) continue;
        at = behind;
        return i;
    }
    return -1;
}

// Returns the year of an era. An era ends in the year in which the next one begins.
int YearOfEra(int slot, int number, const CLCLocale& locale) {
    const CEmperor& era = *LocaleAccess::Era(locale, slot);
    if (number < 1 || number > kLastYear) return kNoYear;
    const long year = locale.GregorianYrFromEmperorYr(era, number);
    const CEmperor* next = LocaleAccess::Era(locale, slot - 1);
    if (next && year > next->GetFirstYear()) return kNoYear;
    return static_cast<int>(year);
}

// Skips month and day after a year without its unit: "22.3.20".
bool SkipSeparated(TextCursor& at, DateNumber* month, DateNumber* day) {
    const unsigned separator = at.Peek();
    return at.SkipAny("./-") && SkipNumber(at, month) && at.Skip(separator) && SkipNumber(at, day);
}

Reading ReadUnits(TextCursor& at, const DateSetting& setting, DateFound* found) {
    at.SkipBlanks();
    const bool bc = SkipBcMarker(at);
    at.SkipBlanks();
    const int era = SkipEra(at, setting.locale);
    at.SkipBlanks();
    DateNumber year = {}, month = {}, day = {};
    if (era >= 0 && at.Skip(kOrigin))
        year = {1, 1};
    else if (!SkipNumber(at, &year))
        return Reading::kNotKnown;
    bool yearGiven = true;
    if (SkipUnit(at, kYearUnit)) {
        if (!SkipNumber(at, &month)) return Reading::kNotKnown;
    } else if (era >= 0) {
        if (!SkipSeparated(at, &month, &day)) return Reading::kNotKnown;
    } else {
        yearGiven = false;
        month = year;
    }
    if (day.digits == 0 &&
        !(SkipUnit(at, kMonthUnit) && SkipNumber(at, &day) && SkipUnit(at, kDayUnit)))
        return Reading::kNotKnown;
    if (month.digits > 2 || day.digits > 2) return Reading::kInvalid;
    const int number = !yearGiven ? PresentYear()
                       : era >= 0 ? YearOfEra(era, year.value, setting.locale)
                                  : YearOfNumber(year, bc, setting);
    const Reading reading = FinishDate(number, month.value, day.value, yearGiven, found);
    if (reading == Reading::kRead && era >= 0) found->date.era = era;
    return reading;
}

}  // namespace

Reading ReadKanjiDate(TextCursor& at, const DateSetting& setting, DateFound* found) {
    return WithWeekday(at, setting, found, ReadUnits);
}

}  // namespace genutil
