// Dates as people type them, in whatever form. Each reader takes a date from the front of a text
// and says where it ends; nothing is read in part.
//
//     date    = [ weekday ] ( numeric | named | kanji ) [ weekday ]
//     numeric = n s n s n | n s n | yyyymmdd        s: one of / - . , or blanks, the same twice
//     named   = [ year s ] day s month [ s year ] | month s day [ s year ], with ordinals, "of"
//     kanji   = [ [ era ] n YEAR ] n MONTH n DAY | era n s n s n
//
// Which of three numbers is what follows the locale's order, unless one has three or more digits or
// is above 31: that is the year, and one in front has month and day behind it (ISO 8601). Month and
// day never change places to make a date of what is none. A missing year is the present one.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genlocale.h"
#include "genutil/date/date_names.h"
#include "genutil/date/date_parse.h"
#include "genutil/date/text_cursor.h"

namespace genutil {

enum class Reading {
    kRead,
    kInvalid,   // numbers in the form of a date, which is none
    kNotKnown,  // anything else
};

// What a date was read as: scratch values, of which the era only where one is named.
struct DateFound {
    DateScratch date;
    bool yearGiven;
};

// The circumstances of a reading.
struct DateSetting {
    const CLCLocale& locale;
    int codeSet;      // of the text
    bool shortYears;  // years of two digits are those of eras where the locale counts so
};

// On kRead the cursor moves behind the date; otherwise nothing changes.
Reading ReadNumericDate(TextCursor& at, const DateSetting& setting, DateFound* found);
Reading ReadNamedDate(TextCursor& at, const DateSetting& setting, DateFound* found);
Reading ReadKanjiDate(TextCursor& at, const DateSetting& setting, DateFound* found);

// The locale's long format, its short one, and then the readers above: the one that leaves least of
// the text. A format counts only where the text has a year of at most four digits for its year.
// The text must end with a NUL.
Reading ReadAnyDate(TextCursor& at, const DateSetting& setting, DateFound* found);

// Only the locale's formats, and only with a year.
bool ReadDateInFormat(TextCursor& at, const DateSetting& setting, DateFound* found);

// -- What the readers share ----------------------------------------------------------------------

struct DateNumber {
    int value, digits;
};

// Checks year, month (from 1) and day and stores them. The year is astronomical.
Reading FinishDate(int year, int month, int day, bool yearGiven, DateFound* found);

// What no year is: FinishDate takes it for an invalid one.
constexpr int kNoYear = INT32_MIN;

// The astronomical year that a number means; kNoYear for 0, which no calendar has.
int YearOfNumber(const DateNumber& number, bool bc, const DateSetting& setting);

// A date with a weekday in front or behind. The abbreviation of a weekday may be that of a month
// too, so both are tried.
template <class Read>
Reading WithWeekday(TextCursor& at, const DateSetting& setting, DateFound* found, Read read) {
    Reading reading = Reading::kNotKnown;
    TextCursor end = at;
    if (TextCursor behind = at; SkipWeekday(behind, setting.locale)) {
        behind.SkipBlanks();
        behind.SkipAny(",.");
        end = behind;
        reading = read(end, setting, found);
    }
    if (reading != Reading::kRead) {
        end = at;
        const Reading plain = read(end, setting, found);
        if (plain < reading) reading = plain;
    }
    if (reading != Reading::kRead) return reading;
    at = end;
    SkipWeekday(at, setting.locale);
    return reading;
}

// The first word of a text, a number, or one character of any other kind; behind blanks. False at
// the end.
bool NextWord(TextCursor& at, const char** word, std::size_t* length);

}  // namespace genutil
