// Reading dates in the formats of a locale.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genlocale.h"
#include "genutil/date/pattern.h"

namespace genutil {

// The result of a reader. If a whole date cannot be read, year, month and day are unchanged.
struct DateScratch {
    std::int32_t year;   // astronomical
    std::int32_t month;  // from 0
    std::int32_t day;
    std::int32_t era;             // index of the era that was named; also 0 for none
    std::int32_t status;          // set to 1 for a number that is not a valid month or day
    bool shortYears;              // years are era years if the locale uses eras; set by CGNDateTime
    std::int32_t yearDigits = 0;  // digits of the last year read; kBcYear for one before Christ
};
constexpr std::int32_t kNoYearRead = -1, kBcYear = -2;

enum DateStatus : std::int32_t { kDateValid = 0, kDateInvalid = 1, kDateNotRecognised = 2 };

// Reads the components of a date one after another. Each function skips blanks, reads one component
// and advances past it. On failure the position is unchanged.
class DateReader {
  public:
    DateReader(const char* text, const CLCLocale& locale, DateScratch& scratch)
        : m_at(text), m_locale(locale), m_scratch(scratch) {}

    const char* At() const { return m_at; }

    bool MonthNumber();
    bool MonthName();
    bool MonthAbbreviation();
    bool DayNumber();
    bool DayName();
    bool DayAbbreviation();
    // Reads a year of any number of digits, or none, with or without a B.C. marker. Never fails.
    void Year();
    bool Separator();
    bool Byte(char c);
    // Reads the name of an era. Returns false if none is named. The name is skipped only in a
    // calendar of eras; otherwise the position is unchanged.
    bool Era();

    // Reads a whole date in a pattern. Returns true also if only the year at its end is missing,
    // which is then the present one.
    bool Date(const Pattern& pattern);
    bool Date(const CGNString& pattern);
    // Reads a date in the locale's format of a kind of LocaleAccess::DateFormat.
    bool LocaleDate(long kind);

  private:
    bool Elements(const Pattern& pattern);
    bool Run(char letter, std::uint32_t count);
    bool Number(int most, int* number);
    int Name(int count, const CGNString* (*name)(const CLCLocale&, int));
    bool Month(const CGNString* (*name)(const CLCLocale&, int));
    const char* SkipBlanks() const;

    const char* m_at;
    const CLCLocale& m_locale;
    DateScratch& m_scratch;
};

// Returns true if a text begins with another text that is not empty. Most are separators of one
// byte.
inline bool HasPrefix(const char* text, const CGNString& prefix) {
    const char* const other = prefix;
    std::size_t n = 0;
    while (other[n] && text[n] == other[n]) ++n;
    return n != 0 && !other[n];
}

// Returns the number of digits from p on.
// @param number receives their value, which stops growing at the limit of an int.
int CountDigits(const char* p, int* number);

// Returns the year that a number with so many digits denotes. Years of one and two digits are
// completed with a century, or with an era if the locale writes dates with eras.
std::int32_t YearOfDigits(int number, int digits, const CLCLocale& locale,
                          const DateScratch& scratch);

}  // namespace genutil
