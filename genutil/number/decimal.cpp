// CGNDecimal: a number as text, in its C spelling and in that of the global locale.
#include <cstddef>
#include <cstring>

#include "gennum.h"
#include "genutil/locale/locale_access.h"
#include "genutil/mbutil/code_set.h"
#include "genutil/number/decimal_text.h"
#include "genutil/number/number_text.h"

using namespace genutil;

namespace {

// Programs never pass longer numbers, and rely on the truncation of the rest.
constexpr std::size_t kWorkArea = 63;

char FirstByte(const CGNString& symbol) {
    return *static_cast<const char*>(symbol);
}

DecimalSymbols SymbolsOf(const CGNString& decimal, const CGNString& separator) {
    DecimalSymbols symbols{FirstByte(decimal), FirstByte(separator)};
    // Only a byte above ASCII can be part of a longer character in a run of digits and symbols.
    if ((symbols.decimal | symbols.separator) & 0x80) {
        EnsureInitialised();
        symbols.steps = g_currentStep;
    }
    return symbols;
}

// Stores the symbols of the global locale. Returns false if allocation of one fails.
bool RegionalSymbols(DecimalSymbols& symbols) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    if (!locale) return false;
    symbols =
        SymbolsOf(LocaleAccess::DecimalSymbol(*locale), LocaleAccess::GroupSeparator(*locale));
    return true;
}

DecimalStatus ParseRegional(const char* text, std::size_t* end) {
    DecimalSymbols symbols;
    DecimalNumber number;
    if (!text || !RegionalSymbols(symbols)) return DecimalStatus::kInvalid;
    return ParseDecimal(text, symbols, number, end);
}

// Reads a number in the regional spelling, or in the C spelling if possible.
bool Read(std::string_view text, const DecimalSymbols& regional, bool force,
          DecimalNumber& number) {
    const DecimalStatus status =
        force ? ParseDecimal(text, regional, number) : ParseCOrRegional(text, regional, number);
    return status == DecimalStatus::kValid;
}

// Most conversions find the settings unchanged.
bool Refresh(CGNString& cached, const CGNString& setting) {
    const unsigned length = setting.GetLength();
    if (cached.GetLength() == length) {
        const char *a = cached, *b = setting;
        unsigned i = 0;
        while (i < length && a[i] == b[i]) ++i;
        if (i == length) return true;
    }
    return StringStorage::Put(cached, setting, length);
}

}  // namespace

namespace genutil {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
// The layout is part of the product: programs derive from the classes and hold them by value.
struct NumberAccess {
    static constexpr std::size_t kString = sizeof(CGNString), kPointer = sizeof(void*);
    static constexpr std::size_t kNumbers = 3 * kString, kSymbols = kNumbers + 8;
    static_assert(offsetof(CGNDecimal, m_display) == 0);
    static_assert(offsetof(CGNDecimal, m_raw) == kString);
    static_assert(offsetof(CGNDecimal, m_grouping) == 2 * kString);
    static_assert(offsetof(CGNDecimal, m_negativeFormat) == kNumbers);
    static_assert(offsetof(CGNDecimal, m_leadingZeroes) == kNumbers + 4);
    static_assert(offsetof(CGNDecimal, m_decimalSymbol) == kSymbols);
    static_assert(offsetof(CGNDecimal, m_negativeSign) == kSymbols + kString);
    static_assert(offsetof(CGNDecimal, m_groupSeparator) == kSymbols + 2 * kString);
    static_assert(kPointer != 4 || sizeof(CGNDecimal) == 200);

    static_assert(offsetof(CGNCurrency, m_displayCurrency) == sizeof(CGNDecimal));
    static_assert(offsetof(CGNCurrency, m_code) == sizeof(CGNDecimal) + kString);
    static_assert(offsetof(CGNCurrency, m_buffer) == sizeof(CGNDecimal) + 2 * kString);
    static_assert(offsetof(CGNCurrency, m_parsed) == sizeof(CGNDecimal) + 3 * kString);
    static_assert(kPointer != 4 || sizeof(CGNCurrency) == 300);
};
#pragma GCC diagnostic pop

}  // namespace genutil

// -- Construction --------------------------------------------------------------------------------

CGNDecimal::CGNDecimal() : m_negativeFormat(0), m_leadingZeroes(0) {}

CGNDecimal::CGNDecimal(const CGNString& text) : CGNDecimal() {
    PutText(m_raw, TextOf(text));
}

CGNDecimal::CGNDecimal(CLCLocale* locale) : CGNDecimal() {
    if (locale) locale->Init();
}

CGNDecimal::CGNDecimal(const CGNDecimal& other) : CGNDecimal() {
    *this = other;
}
CGNDecimal::~CGNDecimal() = default;

// Emptied first, because a part whose allocation fails must not be kept from the previous number.
CGNDecimal& CGNDecimal::operator=(const CGNDecimal& other) {
    if (this == &other) return *this;
    InitValue();
    PutText(m_display, TextOf(other.m_display));
    PutText(m_raw, TextOf(other.m_raw));
    PutText(m_grouping, TextOf(other.m_grouping));
    m_negativeFormat = other.m_negativeFormat;
    m_leadingZeroes = other.m_leadingZeroes;
    PutText(m_decimalSymbol, TextOf(other.m_decimalSymbol));
    PutText(m_negativeSign, TextOf(other.m_negativeSign));
    PutText(m_groupSeparator, TextOf(other.m_groupSeparator));
    return *this;
}

void CGNDecimal::InitValue() {
    for (CGNString* text :
         {&m_display, &m_raw, &m_grouping, &m_decimalSymbol, &m_negativeSign, &m_groupSeparator})
        text->Clear();
    m_negativeFormat = 0;
    m_leadingZeroes = 0;
}

void CGNDecimal::SetRawBuffer(const char* text) {
    PutText(m_raw, text ? text : "");
}

// -- The locale ----------------------------------------------------------------------------------

bool CGNDecimal::GetLocaleSettings() {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    if (!locale) return false;
    m_negativeFormat = LocaleAccess::NegativeFormat(*locale);
    m_leadingZeroes = LocaleAccess::LeadingZeroes(*locale);
    return Refresh(m_grouping, LocaleAccess::DigitsInGroup(*locale)) &&
           Refresh(m_decimalSymbol, LocaleAccess::DecimalSymbol(*locale)) &&
           Refresh(m_negativeSign, LocaleAccess::NegativeSign(*locale)) &&
           Refresh(m_groupSeparator, LocaleAccess::GroupSeparator(*locale));
}

char CGNDecimal::GetRegionalThousandSep() {
    GetLocaleSettings();
    return FirstByte(m_groupSeparator);
}
char CGNDecimal::GetRegionalDecimalSymbol() {
    GetLocaleSettings();
    return FirstByte(m_decimalSymbol);
}
char CGNDecimal::GetCLocaleThousandSep() const {
    return kCSymbols.separator;
}
char CGNDecimal::GetCLocaleDecimalSymbol() const {
    return kCSymbols.decimal;
}

unsigned char CGNDecimal::IsThousandsSeparator(char c) {
    DecimalSymbols symbols;
    return c != 0 && RegionalSymbols(symbols) && c == symbols.separator;
}

int CGNDecimal::IsValid(const char* text) {
    return ParseRegional(text, nullptr) == DecimalStatus::kValid ? 0 : -1;
}

int CGNDecimal::DetermineNumDecimalChars(const char* text) {
    std::size_t end = 0;
    ParseRegional(text, &end);
    return static_cast<int>(end);
}

// -- Conversion ----------------------------------------------------------------------------------

unsigned char CGNDecimal::ConvertToCLocale(unsigned char regional) {
    DecimalNumber number;
    if (!GetLocaleSettings() ||
        !Read(TextOf(m_raw, kWorkArea), SymbolsOf(m_decimalSymbol, m_groupSeparator), regional,
              number)) {
        m_display.Clear();
        return 0;
    }
    char buffer[kMaxDecimalText];
    return PutText(m_display, WriteDecimal(buffer, number, kCSymbols));
}

unsigned char CGNDecimal::ConvertToRegionalLocale(unsigned char separators) {
    DecimalNumber number;
    DecimalSymbols regional;
    if (!GetLocaleSettings() ||
        !Read(TextOf(m_raw, kWorkArea), regional = SymbolsOf(m_decimalSymbol, m_groupSeparator),
              false, number)) {
        m_display.Clear();
        return 0;
    }
    char buffer[kMaxDecimalText];
    const auto grouping = separators ? TextOf(m_grouping, kWorkArea) : std::string_view();
    return PutText(m_display, WriteDecimal(buffer, number, regional, grouping));
}

// The displayed text may no longer be a number, if the global locale has changed since. Its
// readable beginning is then used.
void CGNDecimal::ApplyExponent(int exponent) {
    if (exponent == 0 || !GetLocaleSettings()) return;
    const DecimalSymbols regional = SymbolsOf(m_decimalSymbol, m_groupSeparator);
    DecimalNumber number, shifted;
    if (ParseDecimal(TextOf(m_display), regional, number) == DecimalStatus::kTooLong) return;
    if (!ShiftDecimal(number, exponent, shifted)) return;
    char buffer[kMaxDecimalText];
    const std::string_view text = WriteDecimal(buffer, shifted, regional);
    StringStorage::Put(m_display, text.data(), text.size());
}
