// CGNCurrency: an amount of money with the code of its currency, split on demand.
#include <algorithm>
#include <cstddef>
#include <cstring>

#include "gennum.h"
#include "genutil/ascii.h"
#include "genutil/mbutil/align.h"
#include "genutil/mbutil/character_table.h"
#include "genutil/mbutil/code_page.h"
#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/step.h"
#include "genutil/number/number_text.h"

using namespace genutil;

namespace {

constexpr std::size_t kCodeLength = 3;

// Returns true if there is a whole single-byte character that is a letter at a position of the
// text.
bool IsLetterAt(std::string_view text, std::size_t at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    EnsureInitialised();
    if (g_currentStep && AlignToCharacter(*g_currentStep, Bytes(text.data()), at) != at)
        return false;
    if (IsAscii(byte)) return IsAsciiLetter(text[at]);
    const CodePage* page = FindCodePage(g_codeSetState.codeSet);
    if (!page || (page->form != CodeForm::kSingleByte && page->form != CodeForm::kPairs))
        return false;
    const unsigned character = page->bytes[byte];
    return character != platform::kNoCharacter && IsOfClass(character, platform::kAlpha);
}

std::string_view WithoutBlanks(std::string_view text) {
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    return text;
}

struct Portions {
    std::string_view amount, code;
};

// Returns false for a text of blanks. An empty text has empty portions.
bool Split(std::string_view text, Portions& portions) {
    if (text.empty()) return true;
    text = WithoutBlanks(text);
    if (text.empty()) return false;
    std::size_t letters = 0;
    while (letters < std::min(text.size(), kCodeLength) &&
           IsLetterAt(text, text.size() - letters - 1))
        ++letters;
    if (letters == kCodeLength) {
        portions.code = text.substr(text.size() - kCodeLength);
        text.remove_suffix(kCodeLength);
    } else if (letters == text.size()) {
        return true;  // one or two letters: neither an amount nor a code
    }
    portions.amount = WithoutBlanks(text);
    return true;
}

void Capitalise(CGNString& code) {
    const std::string_view text = TextOf(code);
    const auto isPlain = [](char c) { return IsAscii(static_cast<unsigned char>(c)); };
    if (text.size() > kCodeLength || !std::all_of(text.begin(), text.end(), isPlain)) {
        code.ToUpper();
        return;
    }
    char capitals[kCodeLength];
    std::transform(text.begin(), text.end(), capitals, AsciiUpper);
    PutText(code, {capitals, text.size()});
}

// Stores "amount code", or the amount alone. The result is empty rather than partial if allocation
// fails.
void PutJoined(CGNString& to, const CGNString& amount, const CGNString& code) {
    if (!PutText(to, TextOf(amount)) || code.IsEmpty()) return;
    constexpr unsigned kSpare = 16;  // so that the next amount of similar length fits
    const unsigned length = to.GetLength() + 1 + code.GetLength();
    if (StringStorage::Capacity(to) <= length) to.AllocateBuffer(length + kSpare);
    to += ' ';
    to += code;
    if (to.GetLength() != length) to.Clear();
}

}  // namespace

// -- The value -----------------------------------------------------------------------------------

CGNCurrency::CGNCurrency() : m_parsed(0) {}

CGNCurrency::CGNCurrency(const CGNString& text) : m_parsed(0) {
    PutText(m_buffer, TextOf(text));
}

CGNCurrency::CGNCurrency(const CGNCurrency& other) : CGNDecimal(), m_parsed(0) {
    *this = other;
}

CGNCurrency::CGNCurrency(CLCLocale* locale) : CGNDecimal(locale), m_parsed(0) {}

CGNCurrency::~CGNCurrency() = default;

CGNCurrency& CGNCurrency::operator=(const CGNCurrency& other) {
    if (this == &other) return *this;
    CGNDecimal::operator=(other);
    PutText(m_displayCurrency, TextOf(other.m_displayCurrency));
    PutText(m_code, TextOf(other.m_code));
    PutText(m_buffer, TextOf(other.m_buffer));
    return *this;
}

CGNCurrency& CGNCurrency::operator=(const CGNString& text) {
    if (text.IsEmpty())
        Init();
    else
        PutText(m_buffer, TextOf(text));
    return *this;
}

void CGNCurrency::Init() {
    for (CGNString* text : {&m_displayCurrency, &m_code, &m_buffer}) text->Clear();
    m_parsed = 0;
    InitValue();
}

void CGNCurrency::Empty() {
    Init();
}

void CGNCurrency::SetBuffer(const CGNString& text) {
    PutText(m_buffer, TextOf(text));
    m_parsed = 0;
}

// -- Portions ------------------------------------------------------------------------------------

bool CGNCurrency::SplitOnDemand() {
    if (m_parsed) return true;
    Portions portions;
    const bool split = Split(TextOf(m_buffer), portions);
    const bool amount = PutText(m_raw, portions.amount), code = PutText(m_code, portions.code);
    m_parsed = split && amount && code;
    return amount && code;
}

CGNString& CGNCurrency::GetCodePortion() {
    if (!IsEmpty()) SplitOnDemand();
    return m_code;
}

CGNString& CGNCurrency::GetDecimalPortion() {
    if (!IsEmpty()) SplitOnDemand();
    return m_raw;
}

// The argument may be the display currency, which is cleared only after it has been read. If
// allocation of the other portion fails, the value is unchanged, because that portion would be
// lost.
void CGNCurrency::UpdateDecimalPortion(const CGNString& amount) {
    if (!SplitOnDemand()) return;
    PutText(m_raw, TextOf(amount));
    Join();
}

void CGNCurrency::UpdateCodePortion(const CGNString& code) {
    if (!SplitOnDemand()) return;
    PutText(m_code, TextOf(code));
    Join();
}

void CGNCurrency::Join() {
    m_displayCurrency.Clear();
    PutJoined(m_buffer, m_raw, m_code);
    m_parsed = 0;
}

// -- Display -------------------------------------------------------------------------------------

// Programs rely on these results: an amount that does not convert is not a failure.
unsigned char CGNCurrency::FormatCurrencyToCLocale() {
    SplitOnDemand();
    return Display(!m_raw.IsEmpty() && ConvertToCLocale(1));
}

unsigned char CGNCurrency::FormatCurrencyToRegional(unsigned char separators) {
    SplitOnDemand();
    return Display(!m_raw.IsEmpty() && ConvertToRegionalLocale(separators));
}

unsigned char CGNCurrency::Display(bool converted) {
    if (!converted) {
        PutText(m_displayCurrency, TextOf(m_code));
        return 1;
    }
    Capitalise(m_code);
    PutJoined(m_displayCurrency, m_display, m_code);
    return 1;
}

void CGNCurrency::ResetDisplayBuffer() {
    if (m_raw.IsEmpty()) {
        PutText(m_displayCurrency, TextOf(m_code));
        return;
    }
    Capitalise(m_code);
    PutJoined(m_displayCurrency, m_raw, m_code);
}
