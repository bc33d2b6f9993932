// Texts of 16-bit characters from bytes and of bytes from 16-bit characters, for CGNString.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genutil/allocate.h"

namespace genutil {

// The first character of a text; false when there is none, it is invalid or takes two positions.
bool FirstCharacter(const char* text, unsigned short* character);

// Units in front of the first 0, at most `count`.
std::size_t UnitsBeforeNul(const unsigned short* wide, std::uint64_t count = ~std::uint64_t{0});

// The characters of a text, or its bytes one by one where it is invalid in the code set. Null,
// after the report, when memory runs out.
unsigned short* NewWideText(const char* text, std::uint64_t bytes, std::uint32_t* length);

// The bytes of `count` characters, or of those before a 0, and their number. What does not convert
// becomes '?', and the whole is then cut behind the last character that fits in `lossyLimit` bytes.
// Null, after the report, when memory runs out.
char* NewNarrowText(const unsigned short* wide, std::uint64_t count, std::uint64_t lossyLimit,
                    std::uint32_t* length);

// A text's characters: those that were built before, or else made here. The string that they were
// built for is not changed, since it may be in use elsewhere. A short text takes no memory.
class WideView {
  public:
    WideView(const unsigned short* built, std::uint32_t builtLength, const char* text,
             std::uint64_t bytes);
    WideView(const char* text, std::uint64_t bytes) : WideView(nullptr, 0, text, bytes) {}
    WideView(const WideView&) = delete;
    WideView& operator=(const WideView&) = delete;

    // Terminated; null when memory ran out.
    const unsigned short* Characters() const { return m_characters; }
    std::uint32_t Length() const { return m_length; }

  private:
    static constexpr std::size_t kShort = 64;

    unsigned short m_short[kShort];
    Owned<unsigned short> m_made;
    const unsigned short* m_characters;
    std::uint32_t m_length;
};

}  // namespace genutil
