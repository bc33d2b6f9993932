// Dates and times of day as text. Pure: the locale is handed in.
#pragma once

#include <cstdint>

#include "genlocale.h"
#include "genutil/date/pattern.h"
#include "genutil/string/text_builder.h"

namespace genutil {

// What a date shows. Months and days outside of the calendar are shown as numbers and have no name.
struct DateFields {
    int year;
    int month;  // from 1
    int day;
    int weekday;  // 0 is Monday; outside of 0 to 6 it has no name
    bool bc;      // a B.C. marker goes with the year, in front of it if yearFirst
    bool yearFirst;
    bool shortYears;  // "y" and "yy" are years of one and two digits, and four need not be filled
};

struct ClockFields {
    int hour, minute, second;
};

// The index of a weekday's name, 0 is Monday, of one counted from Sunday as 0.
constexpr int NameOfWeekday(int fromSunday) {
    return fromSunday == 0 ? 6 : fromSunday - 1;
}

void WriteYear(TextBuilder& out, const DateFields& date, std::uint32_t digits);
void WriteMonthName(TextBuilder& out, const DateFields& date, const CLCLocale& locale);
void WriteMonthAbbreviation(TextBuilder& out, const DateFields& date, const CLCLocale& locale);
void WriteDayName(TextBuilder& out, const DateFields& date, const CLCLocale& locale);
void WriteDayAbbreviation(TextBuilder& out, const DateFields& date, const CLCLocale& locale);

// Writes a date as the pattern has it. False at a malformed run, with what stands before it
// written.
bool WriteDate(TextBuilder& out, const Pattern& pattern, const DateFields& date,
               const CLCLocale& locale);

// The hour from 1 to 12.
constexpr int HourOf12(int hour) {
    return hour % 12 == 0 ? 12 : hour % 12;
}

// Writes a time as the pattern has it; every pattern is good.
void WriteTime(TextBuilder& out, const Pattern& pattern, const ClockFields& time,
               const CLCLocale& locale);

}  // namespace genutil
