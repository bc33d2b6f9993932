// JIS X 0208 by row and cell, and its code in Shift-JIS.
//
// A character is written as its two bytes in EUC-JP, 0xA1 plus row and 0xA1 plus cell (both from 0
// to 93): 0xA4A2 is hiragana A. JIS has the same bytes without the top bits. Shift-JIS combines two
// rows in one lead byte, with the second row after trail byte 0x9E, and omits trail byte 0x7F. All
// rows 0 to 93 are therefore representable, whether assigned or not, including 13 and 89 to 92
// (counted from 1), which contain vendor characters.
#pragma once

#include <array>
#include <cstdint>

namespace genutil::jis {

constexpr unsigned kGeta = 0xA2AE;  // the substitute for a character that cannot be displayed

constexpr bool IsKana(unsigned byte) {
    return byte - 0xA1 < 0x3F;
}  // half-width, one byte
constexpr bool IsGraphic(unsigned byte) {
    return byte - 0xA1 < 94;
}  // of a pair in EUC-JP
constexpr bool IsGraphic7(unsigned byte) {
    return byte - 0x21 < 94;
}  // of a pair in JIS
constexpr bool IsLead(unsigned byte) {
    return (byte ^ 0x20) - 0xA1 < 47;
}  // 81 to 9F, E0 to EF

// A Shift-JIS pair is kShiftJisLead[first] + kShiftJisTrail[second] if neither is 0.
using ByteTable = std::array<std::uint16_t, 256>;
constexpr ByteTable kShiftJisLead = [] {
    ByteTable table{};
    for (unsigned b = 0x81; b <= 0xEF; ++b)
        if (b < 0xA0 || b >= 0xE0)
            table[b] = static_cast<std::uint16_t>((0xA1 + 2 * (b - (b < 0xA0 ? 0x81 : 0xC1))) << 8);
    return table;
}();
constexpr ByteTable kShiftJisTrail = [] {
    ByteTable table{};
    for (unsigned b = 0x40; b <= 0xFC; ++b)
        if (b != 0x7F)
            table[b] = static_cast<std::uint16_t>(b >= 0x9F ? b + 0x100 + 0xA1 - 0x9F
                                                            : b + 0xA1 - 0x40 - (b > 0x7F));
    return table;
}();

// The reverse: the sum of base and cell byte, plus one from the omitted trail byte on, where the
// sum of cell byte and gap carries into bit 8.
struct ShiftJisRow {
    std::uint16_t base, gap;
};
constexpr std::array<ShiftJisRow, 256> kShiftJisRow = [] {
    std::array<ShiftJisRow, 256> table{};
    for (unsigned b = 0xA1; b <= 0xFE; ++b) {
        const unsigned row = b - 0xA1, lead = row / 2 + (row < 62 ? 0x81 : 0xC1);
        const bool second = row % 2 != 0;
        table[b] = {static_cast<std::uint16_t>((lead << 8) + (second ? 0x9F : 0x40) - 0xA1),
                    static_cast<std::uint16_t>(second ? 0 : 0x100 - 0xE0)};
    }
    return table;
}();

inline unsigned ToShiftJis(unsigned jis) {
    const unsigned cell = jis & 0xFF;
    const ShiftJisRow& row = kShiftJisRow[jis >> 8];
    return row.base + cell + ((cell + row.gap) >> 8);
}

// Shift-JIS 0xFA40 to 0xFC4B, beyond the rows, contains a second copy of 388 characters. Returns
// the character in rows 2, 13 or 89 to 92, so that text with these codes is preserved, or 0 for any
// other pair.
unsigned FromExtension(unsigned shiftJis);

// Returns the full-width form of half-width katakana 0xA1 to 0xDF.
unsigned FullWidthKana(unsigned kana);
// Returns the full-width form of half-width katakana combined with the sound mark that follows it
// (0xDE or 0xDF), or 0 if they do not combine.
unsigned JoinedKana(unsigned kana, unsigned mark);
// Returns the full-width form of ASCII 0x20 to 0x7E.
unsigned FullWidthAscii(unsigned ascii);

}  // namespace genutil::jis
