// The conventions of a locale from ICU, in the form that Windows provides.
#include "osutil/platform/locale/locale_facts.h"

#include <unicode/ucal.h>
#include <unicode/ucurr.h>
#include <unicode/udat.h>
#include <unicode/uenum.h>
#include <unicode/uloc.h>
#include <unicode/unum.h>
#include <unicode/ures.h>
#include <unicode/ustring.h>

#include <cstdio>
#include <cstring>
#include <memory>

#include "osutil/platform/locale/icu_pattern.h"

namespace genutil::platform {

namespace {

static_assert(sizeof(UChar) == sizeof(std::uint16_t));
constexpr std::int32_t kUnits = LocaleRecord::kUnits;

UChar* AsChars(std::uint16_t* text) {
    return reinterpret_cast<UChar*>(text);
}
const std::uint16_t* AsUnits(const UChar* text) {
    return reinterpret_cast<const std::uint16_t*>(text);
}

template <auto close>
struct Close {
    template <class T>
    void operator()(T* object) const {
        close(object);
    }
};
using DateFormat = std::unique_ptr<UDateFormat, Close<udat_close>>;
using NumberFormat = std::unique_ptr<UNumberFormat, Close<unum_close>>;
using Enumeration = std::unique_ptr<UEnumeration, Close<uenum_close>>;

// Identifiers for which ICU interprets the name differently.
struct NamedLanguage {
    std::uint16_t language;
    const char* name;
};
constexpr NamedLanguage kAliases[] = {
    {0x0414, "nb_NO"},      {0x0814, "nn_NO"},      {0x041A, "hr_HR"},
    {0x081A, "sr_Latn_RS"}, {0x0C1A, "sr_Cyrl_RS"}, {0x042C, "az_Latn_AZ"},
    {0x082C, "az_Cyrl_AZ"}, {0x0443, "uz_Latn_UZ"}, {0x0843, "uz_Cyrl_UZ"},
};

const char* IcuLocale(std::uint32_t language, const char* name) {
    for (const NamedLanguage& alias : kAliases)
        if (alias.language == language) return alias.name;
    return name;
}

// Languages whose long date has no weekday on Windows.
constexpr const char* kLongWithoutWeekday[] = {"be", "bg", "da", "fi", "ja",
                                               "ru", "th", "uk", "zh"};

constexpr NamedLanguage kAbbreviations[] = {
#include "osutil/platform/posix/locale/language_abbreviations.inc"
};

struct Calendar {
    const char* name;
    std::int32_t number;
};
constexpr Calendar kCalendars[] = {
    {"gregorian", 1}, {"japanese", 3}, {"roc", 4},      {"islamic", 6},
    {"buddhist", 7},  {"hebrew", 8},   {"persian", 22}, {"islamic-umalqura", 23},
};

// The date and time patterns of a locale in ICU's data: times from full to short, then dates.
class PatternBundle {
  public:
    explicit PatternBundle(const char* locale) {
        m_bundle.reset(ures_open(nullptr, locale, &m_error));
        for (const char* key : {"calendar", "gregorian", "DateTimePatterns"})
            m_bundle.reset(ures_getByKey(m_bundle.get(), key, nullptr, &m_error));
    }

    const UChar* Time(int style) const { return At(style); }
    const UChar* Date(int style) const { return At(style + 4); }

  private:
    // The text is in ICU's data and outlives the bundle.
    const UChar* At(int index) const {
        UErrorCode error = m_error;
        const UChar* text = ures_getStringByIndex(m_bundle.get(), index, nullptr, &error);
        return U_SUCCESS(error) ? text : nullptr;
    }

    UErrorCode m_error = U_ZERO_ERROR;
    std::unique_ptr<UResourceBundle, Close<ures_close>> m_bundle;
};

class Reader {
  public:
    Reader(std::uint32_t language, const char* locale, LocaleRecord& record)
        : m_language(language), m_locale(locale), m_record(record) {
        std::snprintf(m_western, sizeof m_western, "%s@calendar=gregorian;numbers=latn", locale);
    }

    bool Read() {
        const DateFormat date = OpenDate(UDAT_NONE, UDAT_SHORT);
        if (!date) return false;
        ReadPattern(date.get(), kShortDate);
        ReadOtherPatterns(date.get());
        ReadSeparators();
        ReadNames(date.get());
        m_record.number[kFirstDayOfWeek] = FirstDay(date.get());
        m_record.number[kCalendar] = UsualCalendar();
        DeriveNumbers();
        ReadNumberFormat();
        ReadCurrency();
        ReadLanguage();
        return true;
    }

  private:
    DateFormat OpenDate(UDateFormatStyle time, UDateFormatStyle date) {
        UErrorCode error = U_ZERO_ERROR;
        DateFormat format(udat_open(time, date, m_western, u"UTC", 3, nullptr, 0, &error));
        return U_SUCCESS(error) ? std::move(format) : nullptr;
    }

    bool LongHasWeekday() const {
        for (const char* language : kLongWithoutWeekday)
            if (std::strncmp(m_locale, language, 2) == 0) return false;
        return true;
    }

    void Know(unsigned which) { m_record.known |= 1ull << which; }

    // Stores the text that read(buffer, size, error) writes for `which`.
    template <class ReadText>
    void Keep(unsigned which, ReadText read) {
        UErrorCode error = U_ZERO_ERROR;
        std::uint16_t* text = m_record.text[which];
        read(AsChars(text), kUnits, &error);
        if (U_FAILURE(error) || error == U_STRING_NOT_TERMINATED_WARNING) return;
        PlainText(text, which == kGroupSeparator ? 0x00A0 : ' ');
        Know(which);
    }

    void KeepAscii(unsigned which, const char* ascii) {
        std::uint16_t* text = m_record.text[which];
        for (; *ascii; ++ascii) *text++ = static_cast<unsigned char>(*ascii);
        *text = 0;
        Know(which);
    }

    void KeepPattern(const UChar* pattern, LocaleText which) {
        if (WindowsPattern(AsUnits(pattern), m_record.text[which], kUnits)) Know(which);
    }

    void ReadPattern(const UDateFormat* format, LocaleText which) {
        UErrorCode error = U_ZERO_ERROR;
        UChar pattern[kUnits];
        udat_toPattern(format, false, pattern, kUnits, &error);
        if (U_SUCCESS(error) && error != U_STRING_NOT_TERMINATED_WARNING)
            KeepPattern(pattern, which);
    }

    // Opening a format takes most of the time that ICU needs for a locale, since each format has
    // all names. The other patterns are therefore read directly from ICU's data, if the known
    // pattern is found at its expected place there.
    void ReadOtherPatterns(const UDateFormat* shortDate) {
        const int longStyle = LongHasWeekday() ? UDAT_FULL : UDAT_LONG;
        const PatternBundle bundle(m_locale);
        UChar known[kUnits];
        UErrorCode error = U_ZERO_ERROR;
        udat_toPattern(shortDate, false, known, kUnits, &error);
        const UChar* sameDate = bundle.Date(UDAT_SHORT);
        const UChar* longDate = bundle.Date(longStyle);
        const UChar* time = bundle.Time(UDAT_MEDIUM);
        if (U_SUCCESS(error) && sameDate && longDate && time && u_strcmp(known, sameDate) == 0) {
            KeepPattern(longDate, kLongDate);
            KeepPattern(time, kTimeFormat);
            return;
        }
        const DateFormat longFormat = OpenDate(UDAT_NONE, static_cast<UDateFormatStyle>(longStyle));
        const DateFormat timeFormat = OpenDate(UDAT_MEDIUM, UDAT_NONE);
        if (longFormat) ReadPattern(longFormat.get(), kLongDate);
        if (timeFormat) ReadPattern(timeFormat.get(), kTimeFormat);
    }

    void ReadSeparators() {
        if (!SeparatorOfPattern(m_record.text[kShortDate], m_record.text[kDateSeparator], kUnits))
            KeepAscii(kDateSeparator, "/");
        if (!SeparatorOfPattern(m_record.text[kTimeFormat], m_record.text[kTimeSeparator], kUnits))
            KeepAscii(kTimeSeparator, ":");
        Know(kDateSeparator);
        Know(kTimeSeparator);
    }

    void ReadSymbols(const UDateFormat* format, UDateFormatSymbolType type, int index,
                     unsigned which) {
        Keep(which, [=](UChar* out, std::int32_t size, UErrorCode* error) {
            udat_getSymbols(format, type, index, out, size, error);
        });
    }

    // ICU counts the days from 1 for Sunday. No locale here has a thirteenth month.
    void ReadNames(const UDateFormat* format) {
        for (int i = 0; i < 12; ++i) {
            ReadSymbols(format, UDAT_STANDALONE_MONTHS, i, kMonthName + static_cast<unsigned>(i));
            ReadSymbols(format, UDAT_STANDALONE_SHORT_MONTHS, i,
                        kMonthAbbreviation + static_cast<unsigned>(i));
        }
        KeepAscii(kMonthName + 12, "");
        KeepAscii(kMonthAbbreviation + 12, "");
        for (int i = 0; i < 7; ++i) {
            const int day = i == 6 ? UCAL_SUNDAY : UCAL_MONDAY + i;
            ReadSymbols(format, UDAT_STANDALONE_WEEKDAYS, day, kDayName + static_cast<unsigned>(i));
            ReadSymbols(format, UDAT_STANDALONE_SHORT_WEEKDAYS, day,
                        kDayAbbreviation + static_cast<unsigned>(i));
        }
        ReadSymbols(format, UDAT_AM_PMS, 0, kAm);
        ReadSymbols(format, UDAT_AM_PMS, 1, kPm);
    }

    static std::int32_t FirstDay(const UDateFormat* format) {
        const int day = ucal_getAttribute(udat_getCalendar(format), UCAL_FIRST_DAY_OF_WEEK);
        return (day + 5) % 7;
    }

    std::int32_t UsualCalendar() const {
        UErrorCode error = U_ZERO_ERROR;
        const Enumeration calendars(
            ucal_getKeywordValuesForLocale("calendar", m_locale, true, &error));
        const char* usual = calendars ? uenum_next(calendars.get(), nullptr, &error) : nullptr;
        for (const Calendar& calendar : kCalendars)
            if (usual && std::strcmp(calendar.name, usual) == 0) return calendar.number;
        return 1;
    }

    void DeriveNumbers() {
        const std::uint16_t* date = m_record.text[kShortDate];
        const std::uint16_t* time = m_record.text[kTimeFormat];
        std::int32_t* number = m_record.number;
        number[kShortDateOrder] = OrderOfPattern(date);
        number[kLongDateOrder] = OrderOfPattern(m_record.text[kLongDate]);
        number[kCentury] = 1;
        number[kDayLeadingZero] = RunInPattern(date, 'd', 2) == 2;
        number[kMonthLeadingZero] = RunInPattern(date, 'M', 2) == 2;
        number[kTime24] = RunInPattern(time, 'H', 2) > 0;
        number[kTimeMarkerFirst] = MarkerIsFirst(time);
        number[kHourLeadingZero] =
            RunInPattern(time, 'H', 2) == 2 || RunInPattern(time, 'h', 2) == 2;
    }

    void ReadNumberFormat() {
        UErrorCode error = U_ZERO_ERROR;
        const NumberFormat format(unum_open(UNUM_DECIMAL, nullptr, 0, m_western, nullptr, &error));
        if (U_FAILURE(error)) return;
        const auto keepSymbol = [&](LocaleText which, UNumberFormatSymbol symbol) {
            Keep(which, [&](UChar* out, std::int32_t size, UErrorCode* failure) {
                unum_getSymbol(format.get(), symbol, out, size, failure);
            });
        };
        keepSymbol(kDecimalSymbol, UNUM_DECIMAL_SEPARATOR_SYMBOL);
        keepSymbol(kGroupSeparator, UNUM_GROUPING_SEPARATOR_SYMBOL);
        keepSymbol(kNegativeSign, UNUM_MINUS_SIGN_SYMBOL);
        UChar pattern[kUnits];
        unum_toPattern(format.get(), false, pattern, kUnits, &error);
        if (U_FAILURE(error)) return;
        std::uint16_t grouping[8];
        GroupingOfPattern(AsUnits(pattern), grouping);
        std::memcpy(m_record.text[kGrouping], grouping, sizeof grouping);
        Know(kGrouping);
        m_record.number[kNegativeFormat] = NegativeFormatOfPattern(AsUnits(pattern));
        m_record.number[kLeadingZero] = 1;
        m_record.number[kFractionDigits] = 2;  // the value for plain numbers on Windows in every
                                               // locale
    }

    void ReadCurrency() {
        UErrorCode error = U_ZERO_ERROR;
        std::uint16_t* code = m_record.text[kCurrencyCode];
        ucurr_forLocale(m_locale, AsChars(code), kUnits, &error);
        if (U_FAILURE(error)) return;
        Know(kCurrencyCode);
        Keep(kCurrencySymbol, [&](UChar* out, std::int32_t size, UErrorCode* failure) {
            std::int32_t length = 0;
            const UChar* symbol = ucurr_getName(AsChars(code), m_locale, UCURR_SYMBOL_NAME, nullptr,
                                                &length, failure);
            if (U_SUCCESS(*failure) && length < size)
                u_strcpy(out, symbol);
            else
                *failure = U_BUFFER_OVERFLOW_ERROR;
        });
        m_record.number[kCurrencyDigits] = ucurr_getDefaultFractionDigits(AsChars(code), &error);
    }

    void ReadLanguage() {
        const auto keepName = [&](LocaleText which, auto getName, const char* inLanguage) {
            Keep(which, [&](UChar* out, std::int32_t size, UErrorCode* error) {
                getName(m_locale, inLanguage, out, size, error);
            });
        };
        keepName(kEnglishLanguage, uloc_getDisplayLanguage, "en");
        keepName(kEnglishCountry, uloc_getDisplayCountry, "en");
        keepName(kNativeLanguage, uloc_getDisplayLanguage, m_locale);
        keepName(kNativeCountry, uloc_getDisplayCountry, m_locale);
        UErrorCode error = U_ZERO_ERROR;
        char code[ULOC_COUNTRY_CAPACITY + ULOC_LANG_CAPACITY];
        uloc_getLanguage(m_locale, code, sizeof code, &error);
        if (U_SUCCESS(error)) KeepAscii(kIso639, code);
        uloc_getCountry(m_locale, code, sizeof code, &error);
        if (U_SUCCESS(error)) KeepAscii(kIso3166, code);
        for (const NamedLanguage& row : kAbbreviations)
            if (row.language == m_language) KeepAscii(kLanguageAbbreviation, row.name);
    }

    std::uint32_t m_language;
    const char* m_locale;
    LocaleRecord& m_record;
    char m_western[64];
};

}  // namespace

bool ReadLocaleFacts(std::uint32_t language, const char* name, LocaleRecord* record) {
    record->known = 0;
    for (std::int32_t& number : record->number) number = -1;
    const char* locale = IcuLocale(language, name);
    if (!locale) return false;
    return Reader(language, locale, *record).Read();
}

bool KnowsLocale(std::uint32_t language, const char* name) {
    const char* locale = IcuLocale(language, name);
    UErrorCode error = U_ZERO_ERROR;  // or a warning if a related locale was opened
    if (locale) ures_close(ures_open(nullptr, locale, &error));
    return locale && error == U_ZERO_ERROR;
}

// ICU's data do not change while a process runs.
std::uint32_t LocaleSettingsStamp() {
    return 0;
}

}  // namespace genutil::platform
