// What the library asks of an operating system about the conventions of a locale.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil {

// Names of the texts of a locale. Patterns have the tokens d M y g h H m s t, with other letters
// between apostrophes; days count from Monday.
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
    kMonthName,                               // 13
    kMonthAbbreviation = kMonthName + 13,     // 13
    kDayName = kMonthAbbreviation + 13,       // 7
    kDayAbbreviation = kDayName + 7,          // 7
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

// Names of the numbers. Those of the dates and the time follow from the patterns.
enum LocaleNumber : std::uint8_t {
    kShortDateOrder,  // 0 month day year, 1 day before month, 2 year month day
    kLongDateOrder,
    kCentury,           // 1: years in four digits
    kDayLeadingZero,    // 1: days in two digits
    kMonthLeadingZero,  // 1: months in two digits
    kTime24,            // 1: hours to 24
    kTimeMarkerFirst,   // 1: AM or PM in front
    kHourLeadingZero,   // 1: hours in two digits
    kNegativeFormat,    // 0 (1), 1 -1, 2 - 1, 3 1-, 4 1 -
    kLeadingZero,       // 1: a 0 in front of the decimal symbol
    kFractionDigits,    // of a plain number
    kCalendar,          // 1 Gregorian, 3 Japanese, 7 Thai and so on
    kFirstDayOfWeek,    // 0 Monday
    kCurrencyDigits,
    kLocaleNumbers
};

namespace platform {

// The facts as the system has them, in UTF-16. What the system did not tell is not in `known`,
// which has a bit for each text, and is -1 in `number`.
struct LocaleRecord {
    static constexpr std::size_t kUnits = 80;  // with the terminator
    std::uint64_t known = 0;
    std::uint16_t text[kLocaleTexts][kUnits];
    std::int32_t number[kLocaleNumbers];

    bool Knows(LocaleText which) const { return (known >> which & 1) != 0; }
};
static_assert(kLocaleTexts <= 64);

// Reads the facts of a language identifier; `name` is its locale's name, such as "de_CH", for a
// system that goes by names, and null when the library has none for it. Settings that the user
// changed for the own locale count. False when the system does not know the locale. Slow.
bool ReadLocaleFacts(std::uint32_t language, const char* name, LocaleRecord* record);

// Whether the system has the very locale, and not only facts that it takes from a related one.
bool KnowsLocale(std::uint32_t language, const char* name);

// Changes when settings of the system may have: what was read under the same number is still right.
// Fast.
std::uint32_t LocaleSettingsStamp();

}  // namespace platform

}  // namespace genutil
