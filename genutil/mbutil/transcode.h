// A conversion under way, and the converters that advance it.
#pragma once

#include <cstddef>

namespace genutil {

// Counts characters that did not survive and notes the first of them.
class Losses {
  public:
    Losses() = default;
    Losses(const unsigned char* origin, std::size_t* positions, std::size_t capacity)
        : m_origin(origin), m_positions(positions), m_capacity(capacity) {}
    void Add(const unsigned char* at) {
        if (m_count < m_capacity) m_positions[m_count] = static_cast<std::size_t>(at - m_origin);
        ++m_count;
    }
    std::size_t Count() const { return m_count; }

  private:
    const unsigned char* m_origin = nullptr;
    std::size_t* m_positions = nullptr;
    std::size_t m_capacity = 0;
    std::size_t m_count = 0;
};

struct Transfer {
    const unsigned char* src;     // next byte to read
    const unsigned char* srcEnd;  // one behind the last
    unsigned char* dst;           // next byte to write
    unsigned char* dstEnd;        // one behind the last that may be written; no terminator is added
    Losses losses;                // of characters, at their first byte in the source
};

// Advances until src == srcEnd (true) or the next whole character has no room in dst (false, with
// src before it). Never fails otherwise: what does not convert becomes one visible substitute and a
// loss. An invalid byte is one lost character; a valid sequence without counterpart is one.
using Converter = bool (*)(Transfer&);

// The converter that convertStrExt applies to a pair; for a pair that it does not convert, one that
// copies.
Converter RelatedConverter(int fromCodeSet, int toCodeSet);

// The Japanese trio by JIS arithmetic (genutil/jaconv).
bool JisToShiftJis(Transfer&);
bool JisToEucJp(Transfer&);
bool EucJpToShiftJis(Transfer&);
bool EucJpToJis(Transfer&);
bool ShiftJisToEucJp(Transfer&);
bool ShiftJisToJis(Transfer&);

// Traditional Chinese over CNS 11643 (genutil/mbutil/chinese.cpp).
bool Big5ToEucTw(Transfer&);
bool EucTwToBig5(Transfer&);

// Any code set to any other by way of Unicode, with fast paths for UTF-8 and UTF-16
// (genutil/mbutil/unicode_convert.cpp). False in `known` when a code set has no tables.
bool ConvertThroughUnicode(Transfer&, int fromCodeSet, int toCodeSet, bool* known);

// Central European and Cyrillic text between its ISO 8859 and its Windows form, byte by byte; what
// has no counterpart becomes '?' (genutil/mbutil/byte_convert.cpp).
bool Latin2ToWindows1250(Transfer&);
bool Windows1250ToLatin2(Transfer&);
bool Cyrillic8859ToWindows1251(Transfer&);
bool Windows1251ToCyrillic8859(Transfer&);

}  // namespace genutil
