// Numbers as parts of a date: functions shared by the readers of free forms.
#pragma once

#include <cstdint>

#include "genlocale.h"
#include "genutil/date/date_names.h"
#include "genutil/date/date_parse.h"
#include "genutil/date/text_cursor.h"

namespace genutil {

enum class Reading {
    kRead,
    kInvalid,   // numbers in the form of a date that does not exist
    kNotKnown,  // anything else
};

// A date that was read: scratch values, with an era only if one was named.
struct DateFound {
    DateScratch date;
    bool yearGiven;
};

// The circumstances of a reading.
struct DateSetting {
    const CLCLocale& locale;
    int codeSet;      // of the text
    bool shortYears;  // years of two digits are era years if the locale uses eras
};

struct DateNumber {
    int value, digits;
};

// Checks year, month (from 1) and day, and stores them. The year is astronomical.
Reading FinishDate(int year, int month, int day, bool yearGiven, DateFound* found);

// A year that FinishDate() rejects as invalid.
constexpr int kNoYear = INT32_MIN;

// Returns the astronomical year of a number, or kNoYear for 0, which no calendar has.
int YearOfNumber(const DateNumber& number, bool bc, const DateSetting& setting);

// Returns true if the text after a number shows that it is an hour. A time separator that also
// separates the numbers of the date is not taken into account.
bool IsHour(TextCursor at, const DateSetting& setting, unsigned dateSeparator);

bool IsYearBySize(const DateNumber& number);

enum class DatePart { kYear, kMonth, kDay };

// The order of year, month and day in the short date format.
struct DateOrder {
    DatePart parts[3];
    bool known;  // false if allocation failed while examining the format; no order is then assumed

    explicit DateOrder(const CLCLocale& locale);
    int YearAt() const;
    bool MonthFirst() const;
};

// Reads a date with a weekday before or after it. The abbreviation of a weekday may also be that of
// a month, so both are tried.
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
