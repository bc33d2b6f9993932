// Numbers as parts of a date: what the readers of free forms share.
#pragma once

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

struct DateNumber {
    int value, digits;
};

// Checks year, month (from 1) and day and stores them. The year is astronomical.
Reading FinishDate(int year, int month, int day, bool yearGiven, DateFound* found);

// What no year is: FinishDate takes it for an invalid one.
constexpr int kNoYear = INT32_MIN;

// The astronomical year that a number means; kNoYear for 0, which no calendar has.
int YearOfNumber(const DateNumber& number, bool bc, const DateSetting& setting);

// Whether a number turned out to be an hour, by the text after it. A time separator that is also
// the one in use between the numbers of a date decides nothing.
bool IsHour(TextCursor at, const DateSetting& setting, unsigned dateSeparator);

bool IsYearBySize(const DateNumber& number);

enum class DatePart { kYear, kMonth, kDay };

// The order of year, month and day in the short date format.
struct DateOrder {
    DatePart parts[3];
    bool known;  // false if there was no memory to look at the format; then nothing is guessed

    explicit DateOrder(const CLCLocale& locale);
    int YearAt() const;
    bool MonthFirst() const;
};

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

}  // namespace genutil
