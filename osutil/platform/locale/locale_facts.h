// Platform layer: the conventions of a locale.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil {

// The texts of a locale. Patterns have the tokens d M y g h H m s t, with other letters in
// apostrophes. Days are counted from Monday.
enum LocaleText : std::uint8_t {
    kDateSeparator,
    kTimeSeparator,
    kShortDate,
    kLongDate,
    kTimeFormat,
    kAm,
    kPm,
    kDecimalSymbol,
    kGroupSeparator,
    kGrouping,  // "3;0"
    kNegativeSign,
    kMonthName,                               // 13 texts
    kMonthAbbreviation = kMonthName + 13,     // 13 texts
    kDayName = kMonthAbbreviation + 13,       // 7 texts
    kDayAbbreviation = kDayName + 7,          // 7 texts
    kEnglishLanguage = kDayAbbreviation + 7,  // "German"
    kEnglishCountry,                          // "Switzerland"
    kNativeLanguage,
    kNativeCountry,
    kIso639,                // "de"
    kIso3166,               // "CH"
    kLanguageAbbreviation,  // "DES"
    kCurrencySymbol,
    kCurrencyCode,  // "CHF"
    kLocaleTexts
};

// The numbers of a locale. Those for dates and times are derived from the patterns.
enum LocaleNumber : std::uint8_t {
    kShortDateOrder,  // 0 month day year, 1 day before month, 2 year month day
    kLongDateOrder,
    kCentury,           // 1: years in four digits
    kDayLeadingZero,    // 1: days in two digits
    kMonthLeadingZero,  // 1: months in two digits
    kTime24,            // 1: hours from 0 to 23
    kTimeMarkerFirst,   // 1: AM or PM precedes the time
    kHourLeadingZero,   // 1: hours in two digits
    kNegativeFormat,    // 0 (1), 1 -1, 2 - 1, 3 1-, 4 1 -
    kLeadingZero,       // 1: a 0 before the decimal symbol
    kFractionDigits,    // of a plain number
    kCalendar,          // 1 Gregorian, 3 Japanese, 7 Thai and so on
    kFirstDayOfWeek,    // 0: Monday
    kCurrencyDigits,
    kLocaleNumbers
};

namespace platform {

// The facts as the system provides them, in UTF-16. A text that the system does not provide has no
// bit in `known`, and such a number is -1.
struct LocaleRecord {
    static constexpr std::size_t kUnits = 80;  // with the terminator
    std::uint64_t known = 0;
    std::uint16_t text[kLocaleTexts][kUnits];
    std::int32_t number[kLocaleNumbers];

    bool Knows(LocaleText which) const { return (known >> which & 1) != 0; }
};
static_assert(kLocaleTexts <= 64);

// Reads the facts of a locale, including the settings that the user changed for the user's own
// locale. Slow. Returns false if the system does not know the locale.
// @param language the language identifier.
// @param name the name of the locale, such as "de_CH", for a system that identifies locales by
//     name; null if the library has none.
bool ReadLocaleFacts(std::uint32_t language, const char* name, LocaleRecord* record);

// Returns true if the system has the locale itself, and not only facts of a related one.
bool KnowsLocale(std::uint32_t language, const char* name);

// Returns a number that changes when settings of the system may have changed. Data read under the
// same number is still valid. Fast.
std::uint32_t LocaleSettingsStamp();

}  // namespace platform

}  // namespace genutil
