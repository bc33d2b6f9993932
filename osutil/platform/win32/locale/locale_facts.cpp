// The conventions of a locale from GetLocaleInfo.
#include "osutil/platform/locale/locale_facts.h"

#include <atomic>

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

namespace {

struct Text {
    LocaleText text;
    LCTYPE item;
    std::uint8_t count;  // number of consecutive items
};
constexpr Text kTexts[] = {
    {kDateSeparator, LOCALE_SDATE, 1},
    {kTimeSeparator, LOCALE_STIME, 1},
    {kShortDate, LOCALE_SSHORTDATE, 1},
    {kLongDate, LOCALE_SLONGDATE, 1},
    {kTimeFormat, LOCALE_STIMEFORMAT, 1},
    {kAm, LOCALE_S1159, 1},
    {kPm, LOCALE_S2359, 1},
    {kDecimalSymbol, LOCALE_SDECIMAL, 1},
    {kGroupSeparator, LOCALE_STHOUSAND, 1},
    {kGrouping, LOCALE_SGROUPING, 1},
    {kNegativeSign, LOCALE_SNEGATIVESIGN, 1},
    {kMonthName, LOCALE_SMONTHNAME1, 12},
    {kMonthAbbreviation, LOCALE_SABBREVMONTHNAME1, 12},
    {kDayName, LOCALE_SDAYNAME1, 7},
    {kDayAbbreviation, LOCALE_SABBREVDAYNAME1, 7},
    {kEnglishLanguage, LOCALE_SENGLANGUAGE, 1},
    {kEnglishCountry, LOCALE_SENGCOUNTRY, 1},
    {kNativeLanguage, LOCALE_SNATIVELANGNAME, 1},
    {kNativeCountry, LOCALE_SNATIVECTRYNAME, 1},
    {kIso639, LOCALE_SISO639LANGNAME, 1},
    {kIso3166, LOCALE_SISO3166CTRYNAME, 1},
    {kLanguageAbbreviation, LOCALE_SABBREVLANGNAME, 1},
    {kCurrencySymbol, LOCALE_SCURRENCY, 1},
    {kCurrencyCode, LOCALE_SINTLSYMBOL, 1},
};

// The items of the thirteenth month are not consecutive to those of the twelfth.
constexpr Text kThirteenth[] = {
    {static_cast<LocaleText>(kMonthName + 12), LOCALE_SMONTHNAME13, 1},
    {static_cast<LocaleText>(kMonthAbbreviation + 12), LOCALE_SABBREVMONTHNAME13, 1},
};

struct Number {
    LocaleNumber number;
    LCTYPE item;
};
constexpr Number kNumbers[] = {
    {kShortDateOrder, LOCALE_IDATE},
    {kLongDateOrder, LOCALE_ILDATE},
    {kCentury, LOCALE_ICENTURY},
    {kDayLeadingZero, LOCALE_IDAYLZERO},
    {kMonthLeadingZero, LOCALE_IMONLZERO},
    {kTime24, LOCALE_ITIME},
    {kTimeMarkerFirst, LOCALE_ITIMEMARKPOSN},
    {kHourLeadingZero, LOCALE_ITLZERO},
    {kNegativeFormat, LOCALE_INEGNUMBER},
    {kLeadingZero, LOCALE_ILZERO},
    {kFractionDigits, LOCALE_IDIGITS},
    {kCalendar, LOCALE_ICALENDARTYPE},
    {kFirstDayOfWeek, LOCALE_IFIRSTDAYOFWEEK},
    {kCurrencyDigits, LOCALE_ICURRDIGITS},
};
static_assert(sizeof kNumbers / sizeof *kNumbers == kLocaleNumbers);

static_assert(sizeof(WCHAR) == sizeof(std::uint16_t));

// A text that is longer than that of the record counts as one that the system does not provide.
void ReadText(LCID locale, const Text& text, LocaleRecord* record) {
    for (unsigned i = 0; i < text.count; ++i) {
        const unsigned which = text.text + i;
        if (GetLocaleInfoW(locale, text.item + i, reinterpret_cast<WCHAR*>(record->text[which]),
                           LocaleRecord::kUnits) != 0)
            record->known |= 1ull << which;
    }
}

std::int32_t ReadNumber(LCID locale, LCTYPE item) {
    WCHAR digits[16];
    if (GetLocaleInfoW(locale, item, digits, 16) == 0) return -1;
    std::int32_t number = 0;
    for (const WCHAR* p = digits; *p >= '0' && *p <= '9' && number < 1000000; ++p)
        number = number * 10 + (*p - '0');
    return number;
}

// Two identifiers name a country that no longer exists. Newer systems know only those of the
// country where the language is spoken now.
LCID KnownIdentifier(std::uint32_t language) {
    constexpr LCID kSerbianLatin = 0x081A, kSerbianCyrillic = 0x0C1A, kToSerbia = 0x1C00;
    const bool old = language == kSerbianLatin || language == kSerbianCyrillic;
    return old && !KnowsLocale(language, nullptr) ? language + kToSerbia : language;
}

}  // namespace

bool ReadLocaleFacts(std::uint32_t language, const char*, LocaleRecord* record) {
    const LCID locale = KnownIdentifier(language);
    record->known = 0;
    if (GetLocaleInfoW(locale, LOCALE_ILANGUAGE, nullptr, 0) == 0) return false;
    for (const Text& text : kTexts) ReadText(locale, text, record);
    for (const Text& text : kThirteenth) ReadText(locale, text, record);
    for (const Number& number : kNumbers)
        record->number[number.number] = ReadNumber(locale, number.item);
    return true;
}

bool KnowsLocale(std::uint32_t language, const char*) {
    return GetLocaleInfoW(language, LOCALE_ILANGUAGE, nullptr, 0) != 0;
}

namespace {

// Detects changes of the user's settings, which are in the registry.
class SettingsWatch {
  public:
    SettingsWatch() : m_event(CreateEventA(nullptr, FALSE, FALSE, nullptr)) {
        if (RegOpenKeyExA(HKEY_CURRENT_USER, "Control Panel\\International", 0, KEY_NOTIFY,
                          &m_key) != ERROR_SUCCESS)
            m_key = nullptr;
        Arm();
    }
    // Without a watch, every check counts as a change. A check is a system call, so there is at
    // most one per 16 ms, the tick of the system's clock.
    bool Changed() {
        const DWORD now = GetTickCount() / 16;
        if (m_armed && m_looked.load(std::memory_order_relaxed) == now) return false;
        m_looked.store(now, std::memory_order_relaxed);
        if (m_armed && WaitForSingleObject(m_event, 0) == WAIT_TIMEOUT) return false;
        Arm();
        return true;
    }

  private:
    void Arm() {
        constexpr DWORD kValues = REG_NOTIFY_CHANGE_LAST_SET | REG_NOTIFY_CHANGE_NAME;
        m_armed = m_event && m_key &&
                  RegNotifyChangeKeyValue(m_key, TRUE, kValues, m_event, TRUE) == ERROR_SUCCESS;
    }
    HANDLE m_event;
    HKEY m_key;
    std::atomic<DWORD> m_looked{0};
    bool m_armed = false;
};

}  // namespace

// Includes the thread's language, which determines the user's settings.
std::uint32_t LocaleSettingsStamp() {
    static SettingsWatch watch;
    static LONG changes = 0;
    if (watch.Changed()) InterlockedIncrement(&changes);
    return static_cast<std::uint32_t>(changes) << 16 | LANGIDFROMLCID(GetThreadLocale());
}

}  // namespace genutil::platform
