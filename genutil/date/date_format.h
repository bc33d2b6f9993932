// Dates and times of day as text. Pure: the locale is a parameter.
#pragma once

#include <cstdint>

#include "genlocale.h"
#include "genutil/date/pattern.h"
#include "genutil/string/text_builder.h"

namespace genutil {

// The fields of a date to write. Months and days outside the calendar are written as numbers and
// have no name.
struct DateFields {
    int year;
    int month;  // from 1
    int day;
    int weekday;  // 0 for Monday; has no name outside 0 to 6
    bool bc;      // a B.C. marker is written with the year, before it if yearFirst is true
    bool yearFirst;
    bool shortYears;  // "y" and "yy" are years of one and two digits, and years need not be padded
                      // to four
};

struct ClockFields {
    int hour, minute, second;
};

// Returns the index of a weekday's name, with 0 for Monday, for a weekday counted from Sunday as 0.
constexpr int NameOfWeekday(int fromSunday) {
    return fromSunday == 0 ? 6 : fromSunday - 1;
}

void WriteYear(TextBuilder& out, const DateFields& date, std::uint32_t digits);
void WriteMonthName(TextBuilder& out, const DateFields& date, const CLCLocale& locale);
void WriteMonthAbbreviation(TextBuilder& out, const DateFields& date, const CLCLocale& locale);
void WriteDayName(TextBuilder& out, const DateFields& date, const CLCLocale& locale);
void WriteDayAbbreviation(TextBuilder& out, const DateFields& date, const CLCLocale& locale);

// Writes a date in a pattern. Returns false at a malformed run, after writing everything before it.
bool WriteDate(TextBuilder& out, const Pattern& pattern, const DateFields& date,
               const CLCLocale& locale);

// Returns the hour from 1 to 12.
constexpr int HourOf12(int hour) {
    return hour % 12 == 0 ? 12 : hour % 12;
}

// Writes a time in a pattern. Every pattern is valid.
void WriteTime(TextBuilder& out, const Pattern& pattern, const ClockFields& time,
               const CLCLocale& locale);

}  // namespace genutil
