#include "genutil/date/text_cursor.h"

#include <cstdint>
#include <cstring>

#include "genutil/mbutil/code_page.h"
#include "genutil/mbutil/code_read.h"
#include "genutil/mbutil/wide_convert.h"
#include "mbutil.h"

namespace genutil {

namespace {

unsigned FoldDigit(unsigned c) {
    // The zeros of Arabic, Persian and Thai digits.
    for (const unsigned zero : {0x0660u, 0x06F0u, 0x0E50u})
        if (c >= zero && c < zero + 10) return '0' + (c - zero);
    return c;
}

unsigned Fold(unsigned c) {
    if (c < 0x80) return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c == '\t' ? ' ' : c;
    if (c >= 0xFF01 && c <= 0xFF5E) return Fold(c - 0xFEE0);  // full-width ASCII
    switch (c) {
        case 0x00A0:
        case 0x202F:
        case 0x3000:
        case 0x200E:  // direction marks, which are invisible
        case 0x200F:
            return ' ';
        case 0x060C:  // commas
        case 0x3001:
            return ',';
        case 0x2010:
        case 0x2011:
        case 0x2012:
        case 0x2013:
        case 0x2014:
        case 0x2212:
            return '-';
        case 0x2019:
            return '\'';
        default:
            break;
    }
    c = FoldDigit(c);
    return c < 0x80 || c > 0xFFFF ? c : ToLowerWide(static_cast<unsigned short>(c));
}

}  // namespace

TextCursor::TextCursor(const char* text, std::size_t length, int codeSet)
    : m_at(text),
      m_end(text ? text + length : text),
      m_page(codeSet == mbUtf8 ? nullptr
                               : FindCodePage(codeSet == mbUtf16 ? int{mbWestern} : codeSet)) {
    Load();
}

void TextCursor::Load() {
    m_length = 0;
    m_character = kEnd;
    if (m_at == m_end) return;
    const auto* const at = reinterpret_cast<const unsigned char*>(m_at);
    const auto* const end = reinterpret_cast<const unsigned char*>(m_end);
    if (*at < 0x80) {
        m_length = 1;
        m_character = Fold(*at);
        if (*at == 0) m_character = kInvalid;  // a 0 within a text
        return;
    }
    const auto* const page = static_cast<const CodePage*>(m_page);
    // A code set that switches by escape sequences has no tables of its own.
    const bool hasTables = page && page->form <= CodeForm::kPairs;
    const CodeRead read = hasTables ? ReadCode(*page, at, end)
                          : page    ? CodeRead{0, 0}
                                    : ReadUtf8(at, end);
    m_length = read.length == 0 ? 1 : read.length;
    m_character = read.length == 0 || read.character == kInvalid ? kInvalid : Fold(read.character);
}

void TextCursor::Next() {
    m_at += m_length;
    Load();
}

void TextCursor::MoveTo(const char* place) {
    m_at = place;
    Load();
}

bool TextCursor::SkipBlanks() {
    const char* const from = m_at;
    while (m_character == ' ') Next();
    return m_at != from;
}

bool TextCursor::Skip(unsigned character) {
    if (m_character != character || character == kEnd) return false;
    Next();
    return true;
}

bool TextCursor::SkipAny(const char* characters) {
    if (m_character == kEnd || m_character >= 0x80) return false;
    return std::strchr(characters, static_cast<char>(m_character)) && Skip(m_character);
}

int TextCursor::Number(int* number) {
    int digits = 0, value = 0;
    for (; IsDigitCharacter(m_character); Next()) {
        const int digit = static_cast<int>(m_character - '0');
        value = value > (INT32_MAX - 9) / 10 ? INT32_MAX / 10 * 10 : value * 10 + digit;
        if (digits < INT32_MAX) ++digits;
    }
    *number = value;
    return digits;
}

TextCursor TextCursor::Over(const char* text, std::size_t length) const {
    TextCursor other = *this;
    other.m_at = text;
    other.m_end = text + length;
    other.Load();
    return other;
}

bool TextCursor::SkipWord(const char* ascii) {
    return SkipWord(TextCursor(ascii, std::strlen(ascii), mbWestern));
}

bool TextCursor::SkipWord(TextCursor word) {
    TextCursor at = *this;
    unsigned last = kEnd;
    for (; word.m_character != kEnd; word.Next()) {
        if (at.m_character != word.m_character || word.m_character == kInvalid) {
            TextCursor behind = word;
            if (last != kEnd && behind.Skip('.') && behind.m_character == kEnd) break;
            return false;
        }
        last = word.m_character;
        at.Next();
    }
    if (last == kEnd) return false;
    if (IsLetterCharacter(last) && !IsEastAsian(last)) {
        if (IsLetterCharacter(at.m_character) && !IsEastAsian(at.m_character)) return false;
    }
    if (last != '.') at.Skip('.');
    *this = at;
    return true;
}

bool TextCursor::SkipText(const CGNString& text, int codeSet) {
    TextCursor at = *this, other(text, codeSet);
    if (other.m_character == kEnd) return false;
    for (; other.m_character != kEnd; other.Next(), at.Next())
        if (at.m_character != other.m_character || at.m_character == kInvalid) return false;
    *this = at;
    return true;
}

bool IsLetterCharacter(unsigned c) {
    if (c < 0x80) return c >= 'a' && c <= 'z';
    // Letters above the signs of Latin-1. U+2000 to U+2BFF and U+3000 to U+3004 are signs.
    if (c < 0xC0) return c == 0xAA || c == 0xB5 || c == 0xBA;
    return c != TextCursor::kInvalid && !(c >= 0x2000 && c < 0x2C00) &&
           !(c >= 0x3000 && c < 0x3005) && !(c >= 0x3008 && c < 0x3020);
}

bool IsEastAsian(unsigned c) {
    return c >= 0x2E80 && c < 0xFFFF;
}

}  // namespace genutil
