// Conversion between texts of bytes and texts of 16-bit characters, for CGNString.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genutil/allocate.h"

namespace genutil {

// Returns the number of units before the first 0, at most `count`.
std::size_t UnitsBeforeNul(const unsigned short* wide, std::uint64_t count = ~std::uint64_t{0});

// The 16-bit form of a text. kCharacters: its characters, or, if the text is invalid in the code
// set, its bytes as wide_convert.h carries them. kBytes: always its bytes, for comparison with
// other texts in that form.
enum class WideForm : bool { kCharacters, kBytes };

// Converts to 16-bit form. Returns null, after reporting it, if allocation fails.
unsigned short* NewWideText(const char* text, std::uint64_t bytes, std::uint32_t* length,
                            WideForm form = WideForm::kCharacters);

// Converts at most `count` characters, up to a 0, and stores the number of bytes in `length`.
// Returns null, after reporting it, if allocation fails. Characters that do not convert become '?'.
// The first overload also replaces them in the given text, and updates `count`.
char* NewNarrowText(unsigned short* wide, std::uint32_t* count, std::uint32_t* length);
char* NewNarrowText(const unsigned short* wide, std::uint64_t count, std::uint32_t* length);
// Same, but if any character does not convert, the result is cut after the last character that fits
// in `limit` bytes.
char* NewLimitedText(const unsigned short* wide, std::uint64_t count, std::uint64_t limit,
                     std::uint32_t* length);

// Returns the bytes of a text in the form kBytes.
char* NewCarriedText(const unsigned short* wide, std::uint64_t count, std::uint32_t* length);

// The characters of a text: an existing 16-bit copy, or one that is made here. The string itself is
// not changed, because it may be in use elsewhere. A short text needs no allocation.
class WideView {
  public:
    WideView(const unsigned short* built, std::uint32_t builtLength, const char* text,
             std::uint64_t bytes, WideForm form = WideForm::kCharacters);
    WideView(const char* text, std::uint64_t bytes, WideForm form = WideForm::kCharacters)
        : WideView(nullptr, 0, text, bytes, form) {}
    // Constructs the view of an empty text.
    WideView() : m_characters(m_short), m_length(0), m_text(""), m_bytes(0) { m_short[0] = 0; }
    WideView(const WideView&) = delete;
    WideView& operator=(const WideView&) = delete;

    // Returns the terminated characters, or null if allocation failed.
    const unsigned short* Characters() const { return m_characters; }
    std::uint32_t Length() const { return m_length; }
    // Returns true if the text is invalid in the code set, so that the characters are its bytes.
    bool IsBroken() const;
    // The text that was converted.
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

// The first character of a text, in the 16-bit form of another text.
class FirstCharacter {
  public:
    // An empty text, or one that begins with invalid bytes, has none. `form` is that of the other
    // text.
    FirstCharacter(const char* text, WideForm form);

    unsigned Length() const { return m_length; }  // in units; 0 if there is none
    const unsigned short* Units() const { return m_units; }
    unsigned Bytes() const { return m_bytes; }

  private:
    static constexpr unsigned kMost = 16;

    unsigned short m_units[kMost];
    unsigned m_length = 0, m_bytes = 0;
};

// -- Positions -----------------------------------------------------------------------------------

// Returns true if a position is inside a character but not at its start. Such a position means the
// whole character.
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

// Stores the bytes of the character that begins at a position, without a terminator. Returns their
// number, at most four, or 0 if the position is inside a character or the character has no bytes of
// its own.
int CharacterBytes(const unsigned short* text, std::uint32_t length, std::uint32_t at, char* out);

}  // namespace genutil
