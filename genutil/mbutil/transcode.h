// The state of a conversion, and the converters that advance it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil {

// The state of a text with escape sequences; all zero at the start of every text. The values are
// private to iso2022.cpp, except that set and designated are values of jis::Set in ISO-2022-JP.
struct ShiftState {
    std::uint16_t set = 0;
    std::uint8_t designated = 0;
    std::uint8_t begun = 0;
    std::uint8_t escaped = 0;  // how far the last characters resemble an escape sequence
};

// The reason why a conversion stopped.
// - kDone: everything is converted.
// - kFull: there is no room for the next character or, when encoding, for its escape sequence or
//   for the bytes that must close the text.
// - kBad: the next character is invalid or unknown to the target.
// - kCut: the source ends within a character or an escape sequence, and more follows it.
// - kUnknown: a code set has no tables, because it is unknown or allocation failed.
enum class Stop : std::uint8_t { kDone, kFull, kBad, kCut, kUnknown };

// Counts lost characters and records the positions of the first ones.
class Losses {
  public:
    Losses() = default;
    Losses(const unsigned char* origin, std::size_t* positions, std::size_t capacity)
        : m_origin(origin), m_positions(positions), m_capacity(capacity) {}
    // Continues with the next piece of a text: origin is at position `offset` of the text.
    void Continue(const unsigned char* origin, std::size_t offset) {
        m_origin = origin;
        m_offset = offset;
    }
    void Add(const unsigned char* at) {
        if (m_count < m_capacity)
            m_positions[m_count] = m_offset + static_cast<std::size_t>(at - m_origin);
        ++m_count;
    }
    // Counts earlier losses, which the caller's array contains already.
    void AddEarlier(std::size_t count) { m_count += count; }
    std::size_t Count() const { return m_count; }

  private:
    const unsigned char* m_origin = nullptr;
    std::size_t m_offset = 0;
    std::size_t* m_positions = nullptr;
    std::size_t m_capacity = 0;
    std::size_t m_count = 0;
};

// What follows the source of a transfer.
// - kWhole: nothing. What is written is a whole text, also if there is no room for all of it.
// - kLast: nothing. The source is the last piece of a text.
// - kOpen: more of the text.
enum class Ending : std::uint8_t { kWhole, kLast, kOpen };

struct Transfer {
    const unsigned char* src;     // next byte to read
    const unsigned char* srcEnd;  // one past the last
    unsigned char* dst;           // next byte to write
    unsigned char* dstEnd;        // one past the last that may be written; no terminator is added
    Losses losses;                // positions of lost characters are those of their first byte in
                                  // the source
    Ending ending = Ending::kWhole;
    bool stopsAtLoss = false;         // stop at a lost character instead of replacing it
    bool threefold = false;           // JIS: dst has three bytes for each one of src, and no more
    unsigned short substitute = 0;    // replaces the target's own if it is not 0
    ShiftState reading{}, writing{};  // of the source and of the text that is written
    Stop stop = Stop::kDone;          // why the converter stopped
    ShiftState afterLoss{};           // after kBad, the source's state after the lost character
    unsigned lossLength = 0;          // after kBad, the number of bytes of the lost character
};

// Advances the conversion. Returns true if all of src is converted and, unless more follows, the
// text is closed. Otherwise returns false and sets `stop`, with src at the next whole character.
// Without stopsAtLoss, input that does not convert becomes one visible substitute and one loss. An
// invalid byte is one lost character. A valid sequence without a counterpart is one.
using Converter = bool (*)(Transfer&);

// Returns the converter that convertStrExt applies to a pair of code sets, or a copying one for a
// pair that it does not convert.
Converter RelatedConverter(int fromCodeSet, int toCodeSet);
// Same as above, but returns null for a pair that is copied.
Converter FindRelatedConverter(int fromCodeSet, int toCodeSet);
// Returns the converter of a pair of code sets that does without Unicode, or null if it has none.
Converter FindDirectConverter(int fromCodeSet, int toCodeSet);

// Returns true for the code sets with escape sequences.
constexpr bool HasEscapes(int codeSet) {
    return codeSet == 3 || codeSet == 41 || codeSet == 42;
}

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
// (genutil/mbutil/unicode_convert.cpp). Drops a leading byte-order mark.
bool ConvertThroughUnicode(Transfer&, int fromCodeSet, int toCodeSet);
// Same as above with the tables of both code sets; a byte-order mark is a character.
struct CodePage;
bool ConvertPages(Transfer&, const CodePage& from, const CodePage& to);

// Copies text of one code set, of which each invalid sequence is lost
// (genutil/mbutil/copy_valid.cpp). Not for code sets with escape sequences.
bool CopyValid(Transfer&, const CodePage& page);

// Central European and Cyrillic text between its ISO 8859 and Windows forms, byte by byte.
// Characters without a counterpart become '?' (genutil/mbutil/byte_convert.cpp).
bool Latin2ToWindows1250(Transfer&);
bool Windows1250ToLatin2(Transfer&);
bool Cyrillic8859ToWindows1251(Transfer&);
bool Windows1251ToCyrillic8859(Transfer&);

}  // namespace genutil
