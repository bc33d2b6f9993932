// The locale object: its construction, and reading and setting single settings.
#include "genlocale.h"
#include "genutil/locale/locale_code_set.h"
#include "genutil/locale/locale_edits.h"
#include "genutil/locale/locale_facts.h"
#include "genutil/mbutil/code_set_info.h"
#include "mbutil.h"

using namespace genutil;

// Programs hold locales by value.
static_assert(sizeof(void*) != 4 || sizeof(CLCLocale) == 1856);
static_assert(sizeof(CLCGlobalLocale) == sizeof(CLCLocale));

CLCLocale::CLCLocale()
    : m_multiByte(0),
      m_unicode(0),
      m_reserved(0),
      m_language(clcNoLanguage),
      m_24Hour(0),
      m_customized(0),
      m_localeId(kUserLocaleId) {
    InitDefault();
}

CLCLocale::CLCLocale(const CLCLocale& other) = default;
CLCLocale& CLCLocale::operator=(const CLCLocale& other) = default;
CLCLocale::~CLCLocale() = default;

namespace {

#include "genutil/locale/locale_formats.inc"

unsigned char Give(CGNString& to, const CGNString& setting) {
    to = setting;
    return 1;
}

}  // namespace

const char* const* CLCLocale::TimeFormats() {
    return kTimeFormats;
}
const char* const* CLCLocale::ShortDateFormats() {
    return kShortDateFormats;
}
const char* const* CLCLocale::LongDateFormats() {
    return kLongDateFormats;
}

/* -- Formats and texts ------------------------------------------------------------------------- */

unsigned char CLCLocale::TimeFormatString(CGNString& format) const {
    return Give(format, m_timeFormat);
}
unsigned char CLCLocale::Is24Hour() const {
    return m_24Hour != 0;
}

static constexpr long kLong = 2;  // the selector of the long date format

unsigned char CLCLocale::DateFormatString(CGNString& format) const {
    return DateFormatString(m_longOrShort, format);
}
unsigned char CLCLocale::DateFormatString(long which, CGNString& format) const {
    return Give(format, which == kLong ? m_longDateFormat : m_shortDateFormat);
}
void CLCLocale::SetDateFormatString(long which, CGNString format) {
    (which == kLong ? m_longDateFormat : m_shortDateFormat) = format;
    Touch();
}

long CLCLocale::LongOrShort() const {
    return m_longOrShort;
}
void CLCLocale::SetLongOrShort(long which) {
    m_longOrShort = static_cast<std::int32_t>(which);
    Touch();
}

unsigned char CLCLocale::DateSep(CGNString& separator) const {
    return Give(separator, m_dateSeparator);
}
void CLCLocale::SetDateSep(CGNString separator) {
    m_dateSeparator = separator;
    Touch();
}
unsigned char CLCLocale::TimeSep(CGNString& separator) const {
    return Give(separator, m_timeSeparator);
}
void CLCLocale::SetTimeSep(CGNString separator) {
    m_timeSeparator = separator;
    Touch();
}

unsigned char CLCLocale::MonthName(long i, CGNString& name) const {
    return Give(name, m_monthNames[i]);
}
unsigned char CLCLocale::MonthAbbrev(long i, CGNString& name) const {
    return Give(name, m_monthAbbreviations[i]);
}
unsigned char CLCLocale::DayName(long i, CGNString& name) const {
    return Give(name, m_dayNames[i]);
}
unsigned char CLCLocale::DayAbbrev(long i, CGNString& name) const {
    return Give(name, m_dayAbbreviations[i]);
}

unsigned char CLCLocale::AMPMMarker(long pm, CGNString& marker) const {
    return Give(marker, pm ? m_pm : m_am);
}
void CLCLocale::SetAMPMMarker(long pm, CGNString marker) {
    (pm ? m_pm : m_am) = marker;
    Touch();
}
CGNString CLCLocale::GetAMString() const {
    return m_am;
}
CGNString CLCLocale::GetPMString() const {
    return m_pm;
}

// Units are written after numbers only in Japanese, and in Shift-JIS whatever the current code set
// is.
unsigned char CLCLocale::YearChar(CGNString& unit) const {
    return Give(unit, LocaleIsJapanese() ? "\x94\x4E" : "");
}
unsigned char CLCLocale::MonthChar(CGNString& unit) const {
    return Give(unit, LocaleIsJapanese() ? "\x8C\x8E" : "");
}
unsigned char CLCLocale::DayChar(CGNString& unit) const {
    return Give(unit, LocaleIsJapanese() ? "\x93\xFA" : "");
}
unsigned char CLCLocale::HourChar(CGNString& unit) const {
    return Give(unit, LocaleIsJapanese() ? "\x8E\x9E" : "");
}
unsigned char CLCLocale::MinuteChar(CGNString& unit) const {
    return Give(unit, LocaleIsJapanese() ? "\x95\xAA" : "");
}
unsigned char CLCLocale::SecondChar(CGNString& unit) const {
    return Give(unit, LocaleIsJapanese() ? "\x95\x62" : "");
}

long CLCLocale::GetCalendarType() const {
    return m_calendarType;
}
void CLCLocale::SetCalendarType(long type) {
    m_calendarType = static_cast<std::int32_t>(type);
    Touch();
}

/* -- Numbers ----------------------------------------------------------------------------------- */

unsigned char CLCLocale::GetDecDecimalSymbol(CGNString& symbol) const {
    return Give(symbol, m_decimalSymbol);
}
unsigned char CLCLocale::GetDecNegativeSign(CGNString& sign) const {
    return Give(sign, m_negativeSign);
}
unsigned char CLCLocale::GetDecNumDigitsInGroup(CGNString& digits) const {
    return Give(digits, m_digitsInGroup);
}
unsigned char CLCLocale::GetDecDigitGroupSeparator(CGNString& separator) const {
    return Give(separator, m_groupSeparator);
}
long CLCLocale::GetDecNegativeNumFormat() const {
    return m_negativeFormat;
}
unsigned char CLCLocale::GetDecDisplayLeadingZeroes() const {
    return m_leadingZeroes;
}

// A "." is never part of a longer character.
unsigned char CLCLocale::RegionalizeDecimalSeparator(CGNString& s) const {
    if (m_decimalSymbol.IsEmpty() || m_decimalSymbol == ".") return 0;
    if (!std::strchr(s, '.')) return 0;
    CGNString regional;
    regional.AllocateBuffer(s.GetLength() + m_decimalSymbol.GetLength(), 1);
    for (const char* p = s; *p; ++p) {
        if (*p == '.')
            regional += m_decimalSymbol;
        else
            regional += *p;
    }
    s = regional;
    return 1;
}

/* -- The locale itself ------------------------------------------------------------------------- */

unsigned long CLCLocale::GetLocaleId() const {
    return m_localeId;
}
unsigned char CLCLocale::IsMultiByte() const {
    return m_multiByte;
}
unsigned char CLCLocale::IsUnicode() const {
    return m_unicode;
}
CLCLanguage CLCLocale::GetLang() const {
    return m_language;
}
CGNString CLCLocale::GetLangName() const {
    return LanguageName(m_language);
}
unsigned char CLCLocale::LocaleIsEnglish() const {
    return m_language == clcEnglish;
}
unsigned char CLCLocale::LocaleIsJapanese() const {
    return m_language == clcJapanese;
}
unsigned char CLCLocale::Customized() const {
    return m_customized;
}
void CLCLocale::SetCustomized(unsigned char customized) {
    m_customized = customized;
    Touch();
}

void CLCLocale::GetFileSuffix(char* out) const {
    constexpr unsigned kLength = 2;
    mbstrncpy(out, m_localeText, kLength);
    out[kLength] = 0;
}

unsigned char CLCLocale::GetShortLocaleString(CGNString& s) {
    constexpr unsigned kShort = 5;
    if (s.GetLength() > kShort) s.CopyNBytes(s, kShort);
    return 1;
}
