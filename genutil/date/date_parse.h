// Dates read in the formats of a locale.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genlocale.h"
#include "genutil/date/pattern.h"

namespace genutil {

// What a reader has found; a failed reading of a whole date leaves year, month and day as they
// were.
struct DateScratch {
    std::int32_t year;   // astronomical
    std::int32_t month;  // from 0
    std::int32_t day;
    std::int32_t era;     // slot of the era that was named; 0 also for none
    std::int32_t status;  // becomes 1 for a number that is no month or day
    bool shortYears;      // years are those of eras where the locale counts so: CGNDateTime's
    std::int32_t yearDigits = 0;  // of the year that was read last; kBcYear for one before Christ
};
constexpr std::int32_t kNoYearRead = -1, kBcYear = -2;

enum DateStatus : std::int32_t { kDateValid = 0, kDateInvalid = 1, kDateNotRecognised = 2 };

// Reads components of a date one after another. Each function skips blanks, reads one and moves
// behind it; on failure it stays.
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
    // A year of any number of digits, or none, with or without a B.C. marker; never fails.
    void Year();
    bool Separator();
    bool Byte(char c);
    // False when no era is named. A name is only skipped in a calendar of eras.
    bool Era();

    // A whole date in a pattern. True also when only the year at its end is missing, which is then
    // the present one.
    bool Date(const Pattern& pattern);
    bool Date(const CGNString& pattern);
    // In the locale's format of a kind of LocaleAccess::DateFormat.
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

// Whether a text begins with another, which is not empty. Most are a separator of one byte.
inline bool HasPrefix(const char* text, const CGNString& prefix) {
    const char* const other = prefix;
    std::size_t n = 0;
    while (other[n] && text[n] == other[n]) ++n;
    return n != 0 && !other[n];
}

// Digits from p on, and the number that they are; it stops growing where an int ends.
int CountDigits(const char* p, int* number);

// The year that a number of so many digits stands for: those of one and two are put into a century,
// or into an era where dates are written with eras.
std::int32_t YearOfDigits(int number, int digits, const CLCLocale& locale,
                          const DateScratch& scratch);

}  // namespace genutil
