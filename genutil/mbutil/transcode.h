// The state of a conversion, and the converters that advance it.
#pragma once

#include <cstddef>

namespace genutil {

// Counts lost characters and records the positions of the first ones.
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
    const unsigned char* srcEnd;  // one past the last
    unsigned char* dst;           // next byte to write
    unsigned char* dstEnd;        // one past the last that may be written; no terminator is added
    Losses losses;                // positions of lost characters are those of their first byte in
                                  // the source
};

// Advances the conversion. Returns true at src == srcEnd. Returns false if there is no room in dst
// for the next whole character, which src then precedes. Does not fail otherwise: input that does
// not convert becomes one visible substitute and one loss. An invalid byte is one lost character. A
// valid sequence without a counterpart is one.
using Converter = bool (*)(Transfer&);

// Returns the converter that convertStrExt applies to a pair of code sets, or a copying one for a
// pair that it does not convert.
Converter RelatedConverter(int fromCodeSet, int toCodeSet);

// The Japanese trio by JIS arithmetic (genutil/jaconv).
bool JisToShiftJis(Transfer&);
bool JisToEucJp(Transfer&);
bool EucJpToShiftJis(Transfer&);
bool EucJpToJis(Transfer&);
bool ShiftJisToEucJp(Transfer&);
bool ShiftJisToJis(Transfer&);

// Traditional Chinese by way of CNS 11643 (genutil/mbutil/chinese.cpp).
bool Big5ToEucTw(Transfer&);
bool EucTwToBig5(Transfer&);

// Converts any code set to any other by way of Unicode, with fast paths for UTF-8 and UTF-16
// (genutil/mbutil/unicode_convert.cpp).
// @param known receives false if a code set has no tables.
bool ConvertThroughUnicode(Transfer&, int fromCodeSet, int toCodeSet, bool* known);

// Central European and Cyrillic text between its ISO 8859 and Windows forms, byte by byte.
// Characters without a counterpart become '?' (genutil/mbutil/byte_convert.cpp).
bool Latin2ToWindows1250(Transfer&);
bool Windows1250ToLatin2(Transfer&);
bool Cyrillic8859ToWindows1251(Transfer&);
bool Windows1251ToCyrillic8859(Transfer&);

}  // namespace genutil
