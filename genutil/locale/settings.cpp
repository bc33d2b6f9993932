// Filling a locale object: from the system's facts, with plain English, or by an application.
#include <algorithm>
#include <cstring>
#include <iterator>

#include "genlocale.h"
#include "genutil/locale/era.h"
#include "genutil/locale/locale_code_set.h"
#include "genutil/locale/locale_edits.h"
#include "genutil/locale/locale_facts.h"
#include "genutil/locale/pattern_characters.h"
#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/code_set_info.h"
#include "mbutil.h"

using namespace genutil;

namespace {

// A fact that the system does not provide leaves the setting unchanged. An equal one is not
// written, because other threads may be reading the global locale.
void Take(CGNString& setting, const char* fact) {
    if (fact && setting != fact) setting = fact;
}
void Take(std::int32_t& setting, std::int32_t fact) {
    if (fact >= 0) setting = fact;
}

void TakeNames(CGNString* names, int count, const char* const* facts) {
    for (int i = 0; i < count; ++i) Take(names[i], facts[i]);
}

// Replaces a setting unless the text is empty.
void Replace(CGNString& setting, const CGNString& text) {
    if (!text.IsEmpty()) setting = text;
}

bool IsComplete(const LocaleFacts& facts) {
    return std::all_of(std::begin(facts.text), std::end(facts.text),
                       [](const char* text) { return text != nullptr; });
}

// Returns the facts of a locale by its name or, if no row has that name, by its identifier.
const LocaleFacts* FactsOf(const CGNString& name, std::uint32_t localeId, bool refresh) {
    const std::uint32_t language = LanguageOfLocaleId(localeId);
    const int codeSet = CodeSetOfLocale(name, localeId);
    return refresh ? RefreshLocaleFacts(language, codeSet) : FindLocaleFacts(language, codeSet);
}

}  // namespace

void CLCLocale::SetLocale(CGNString name) {
    m_localeName = name;
    m_localeId = kUserLocaleId;
    if (!name.IsEmpty()) {
        const mbLocale locale = mbOpenLocale(name, mbOpenBest, nullptr);
        m_localeId = static_cast<std::uint32_t>(locale ? mbLocaleLCID(locale) : mbGetLCID(name));
        mbCloseLocale(locale);
    }
    Init();
}

void CLCLocale::Init() {
    // The settings of the user's locale may have changed since they were read.
    const LocaleFacts* facts =
        FactsOf(m_localeName, m_localeId, /* refresh = */ m_localeId == kUserLocaleId);
    // Facts that the system does not provide must not be kept from the previous locale.
    if (!facts || !IsComplete(*facts)) TakeFacts(EnglishFacts());
    if (facts) TakeFacts(*facts);
    if (m_localeId != kUserLocaleId) return;
    const LocaleRow* row = FindLocaleByLanguage(LanguageOfLocaleId(m_localeId));
    m_localeName = row ? row->name : "en_US";
}

void CLCLocale::InitDefault() {
    const unsigned char customized = m_customized;
    m_customized = 0;
    TakeFacts(EnglishFacts());
    m_customized = customized;
}

// Called before every formatting, so it does nothing if neither the system's settings nor any
// locale object has changed since the last time.
void CLCLocale::InitControlPanelDateSettings() {
    static Freshness fresh;
    const std::uint64_t mark = MarkOf(this);
    if (m_customized || fresh.Is(mark)) return;
    if (const LocaleFacts* facts = FactsOf(m_localeName, m_localeId, true)) TakeDateFacts(*facts);
    fresh.Note(mark);
}

void CLCLocale::InitControlPanelTimeSettings() {
    static Freshness fresh;
    const std::uint64_t mark = MarkOf(this);
    if (m_customized || fresh.Is(mark)) return;
    if (const LocaleFacts* facts = FactsOf(m_localeName, m_localeId, true)) TakeTimeFacts(*facts);
    fresh.Note(mark);
}

void CLCLocale::TakeFacts(const LocaleFacts& facts) {
    Touch();
    const CodeSetInfo* codeSet = FindCodeSet(facts.codeSet);
    m_multiByte = codeSet && codeSet->multiByte;
    m_unicode = facts.codeSet == mbUtf8 || facts.codeSet == mbUtf16;
    m_language = facts.languageClass;
    Take(m_localeText, facts.text[kLanguageAbbreviation]);
    TakeNames(m_monthNames, kMonths, facts.text + kMonthName);
    TakeNames(m_monthAbbreviations, kMonths, facts.text + kMonthAbbreviation);
    TakeNames(m_dayNames, kDays, facts.text + kDayName);
    TakeNames(m_dayAbbreviations, kDays, facts.text + kDayAbbreviation);
    FillEras(m_eras, kEras);
    if (m_customized) return;
    constexpr std::int32_t kShort = 1;
    m_longOrShort = kShort;
    Take(m_calendarType, facts.number[kCalendar]);
    TakeDateFacts(facts);
    TakeTimeFacts(facts);
    TakeNumberFacts(facts);
}

void CLCLocale::TakeDateFacts(const LocaleFacts& facts) {
    Take(m_dateSeparator, facts.text[kDateSeparator]);
    Take(m_shortDateFormat, facts.text[kShortDate]);
    Take(m_longDateFormat, facts.text[kLongDate]);
}

void CLCLocale::TakeTimeFacts(const LocaleFacts& facts) {
    Take(m_timeSeparator, facts.text[kTimeSeparator]);
    Take(m_am, facts.text[kAm]);
    Take(m_pm, facts.text[kPm]);
    if (!facts.text[kTimeFormat] || m_timeFormat == facts.text[kTimeFormat]) return;
    m_timeFormat = facts.text[kTimeFormat];
    m_24Hour = PatternHas(m_timeFormat, facts.codeSet, 'H');
}

void CLCLocale::TakeNumberFacts(const LocaleFacts& facts) {
    Take(m_decimalSymbol, facts.text[kDecimalSymbol]);
    Take(m_negativeSign, facts.text[kNegativeSign]);
    Take(m_digitsInGroup, facts.text[kGrouping]);
    Take(m_groupSeparator, facts.text[kGroupSeparator]);
    Take(m_negativeFormat, facts.number[kNegativeFormat]);
    if (facts.number[kLeadingZero] >= 0) m_leadingZeroes = facts.number[kLeadingZero] != 0;
}

// The separator is the first character that is neither a token nor a blank. An apostrophe ends the
// search, because quoted text is not a separator.
void CLCLocale::TakeTimeFormat(const CGNString& format) {
    m_timeFormat = format;
    const int codeSet = GetCodeSet();
    m_24Hour = PatternHas(m_timeFormat, codeSet, 'H');
    const char* const at =
        static_cast<const char*>(m_timeFormat) + std::strspn(m_timeFormat, " hHmst");
    if (*at == 0 || *at == '\'') return;
    const int length = mbbytesinchartype(reinterpret_cast<const unsigned char*>(at), codeSet);
    m_timeSeparator.CopyNBytes(at, static_cast<unsigned>(length));
}

void CLCLocale::GetDefaults(CGNString& timeFormat, CGNString& shortDateFormat,
                            CGNString& longDateFormat, long& longOrShort, CGNString& digitsInGroup,
                            long& negativeNumFormat, unsigned char& displayLeadingZeroes,
                            CGNString& decimalSymbol, CGNString& negativeSign,
                            CGNString& digitGroupSeparator, CGNString& localeName) {
    Init();
    timeFormat = m_timeFormat;
    shortDateFormat = m_shortDateFormat;
    longDateFormat = m_longDateFormat;
    longOrShort = m_longOrShort;
    digitsInGroup = m_digitsInGroup;
    negativeNumFormat = m_negativeFormat;
    displayLeadingZeroes = m_leadingZeroes;
    decimalSymbol = m_decimalSymbol;
    negativeSign = m_negativeSign;
    digitGroupSeparator = m_groupSeparator;
    localeName = m_localeName;
}

void CLCLocale::Customize(const CGNString& timeFormat, const CGNString& shortDateFormat,
                          const CGNString& longDateFormat, long longOrShort,
                          const CGNString& digitsInGroup, long negativeNumFormat,
                          unsigned char displayLeadingZeroes, const CGNString& decimalSymbol,
                          const CGNString& negativeSign, const CGNString& digitGroupSeparator,
                          const CGNString& localeName) {
    if (localeName != m_localeName) SetLocale(localeName);
    if (!timeFormat.IsEmpty()) TakeTimeFormat(timeFormat);
    Replace(m_shortDateFormat, shortDateFormat);
    Replace(m_longDateFormat, longDateFormat);
    m_longOrShort = static_cast<std::int32_t>(longOrShort);
    m_digitsInGroup = digitsInGroup;
    m_negativeFormat = static_cast<std::int32_t>(negativeNumFormat);
    m_leadingZeroes = displayLeadingZeroes;
    Replace(m_decimalSymbol, decimalSymbol);
    Replace(m_negativeSign, negativeSign);
    Replace(m_groupSeparator, digitGroupSeparator);
    m_customized = 1;
    Touch();
}
