// Texts of 16-bit characters from bytes and of bytes from 16-bit characters, for CGNString.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genutil/allocate.h"

namespace genutil {

// Units in front of the first 0, at most `count`.
std::size_t UnitsBeforeNul(const unsigned short* wide, std::uint64_t count = ~std::uint64_t{0});

// How a text becomes units: its characters, or where it is invalid in the code set its bytes, as
// wide_convert.h carries them; or in any case its bytes, to be compared with others.
enum class WideForm : bool { kCharacters, kBytes };

// Null, after the report, when memory runs out.
unsigned short* NewWideText(const char* text, std::uint64_t bytes, std::uint32_t* length,
                            WideForm form = WideForm::kCharacters);

// The bytes of `count` characters, or of those before a 0, and their number; null, after the
// report, when memory runs out. What does not convert becomes '?', in the given text too.
char* NewNarrowText(unsigned short* wide, std::uint32_t* count, std::uint32_t* length);
char* NewNarrowText(const unsigned short* wide, std::uint64_t count, std::uint32_t* length);
// With '?' for what does not convert the whole is cut behind the last character that fits in
// `limit` bytes.
char* NewLimitedText(const unsigned short* wide, std::uint64_t count, std::uint64_t limit,
                     std::uint32_t* length);

// The bytes of text that was made in the form of bytes.
char* NewCarriedText(const unsigned short* wide, std::uint64_t count, std::uint32_t* length);

// A text's characters: those that were built before, or else made here. The string that they were
// built for is not changed, since it may be in use elsewhere. A short text takes no memory.
class WideView {
  public:
    WideView(const unsigned short* built, std::uint32_t builtLength, const char* text,
             std::uint64_t bytes, WideForm form = WideForm::kCharacters);
    WideView(const char* text, std::uint64_t bytes, WideForm form = WideForm::kCharacters)
        : WideView(nullptr, 0, text, bytes, form) {}
    WideView(const WideView&) = delete;
    WideView& operator=(const WideView&) = delete;

    // Terminated; null when memory ran out.
    const unsigned short* Characters() const { return m_characters; }
    std::uint32_t Length() const { return m_length; }
    // Whether the characters are bytes, of a text that is invalid in the code set.
    bool IsBroken() const;
    // What they were made of.
    const char* Text() const { return m_text; }
    std::uint64_t Bytes() const { return m_bytes; }

  private:
    static constexpr std::size_t kShort = 64;

    unsigned short m_short[kShort];
    Owned<unsigned short> m_made;
    const unsigned short* m_characters;
    std::uint32_t m_length;
    const char* const m_text;
    const std::uint64_t m_bytes;
};

// The first character of a text, as it stands in the characters of another.
class FirstCharacter {
  public:
    // There is none at the start of an empty or invalid text. `form` is that of the other text.
    FirstCharacter(const char* text, WideForm form);

    unsigned Length() const { return m_length; }  // in units; 0 when there is none
    const unsigned short* Units() const { return m_units; }
    unsigned Bytes() const { return m_bytes; }

  private:
    static constexpr unsigned kMost = 16;

    unsigned short m_units[kMost];
    unsigned m_length = 0, m_bytes = 0;
};

// -- Positions -----------------------------------------------------------------------------------

// Whether a position in a text is not the first of a character. It means the whole character.
inline bool IsInside(const unsigned short* text, std::uint32_t at) {
    const unsigned unit = text[at];
    if (unit < 0xDC00 || unit > 0xDFFF) return false;
    const bool isSecond = at > 0 && text[at - 1] >= 0xD800 && text[at - 1] < 0xDC00;
    return isSecond || (unit >= 0xDE00 && unit < 0xDF00);
}
inline std::uint32_t AlignDown(const unsigned short* text, std::uint32_t length, std::uint32_t at) {
    while (at > 0 && at < length && IsInside(text, at)) --at;
    return at;
}
inline std::uint32_t AlignUp(const unsigned short* text, std::uint32_t length, std::uint32_t at) {
    while (at < length && IsInside(text, at)) ++at;
    return at;
}

// The bytes of the character that begins at a position; returns their number, at most four, without
// a terminator: 0 inside a character, and where it has no bytes of its own.
int CharacterBytes(const unsigned short* text, std::uint32_t length, std::uint32_t at, char* out);

}  // namespace genutil
