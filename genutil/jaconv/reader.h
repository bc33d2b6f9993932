// Reading characters from text in EUC-JP, Shift-JIS and JIS. Each reader has
//
//     PlainNext()  true if the next byte is ASCII and represents itself, so that it may be copied
//                  in a run
//     Pair()       the kanji at the current position as two EUC bytes, without stepping over it;
//                  0 for anything else
//     PairBlock()  the kanji among the next 16 bytes, which must exist
//     Other()      any other character at the current position
//     IsCut()      true if the rest of the text may be the beginning of a longer character or
//                  escape sequence
//
// Characters follow the stepping rules of the code set. A byte that does not begin a character is
// one lost character. Except for Pair(), the text must not be empty.
#pragma once

#include <cstddef>

#include "genutil/jaconv/escapes.h"
#include "genutil/jaconv/jis.h"
#include "genutil/jaconv/kanji_lanes.h"
#include "genutil/mbutil/transcode.h"

namespace genutil::jis {

enum class Kind {
    kAscii,
    kPair,
    kSupplement,  // of JIS X 0212, as two EUC bytes
    kKana,        // half-width, 0xA1 to 0xDF
    kLost,
    kNothing  // a shift between sets, which is not a character
};

struct Unit {
    Kind kind;
    unsigned length;  // in the source
    unsigned code = 0;
};

struct Reader {
    const unsigned char* p;
    const unsigned char* end;
    std::size_t Left() const { return static_cast<std::size_t>(end - p); }

    // Readers of text without shifts begin every piece alike.
    void Begin(const ShiftState&) {}
    ShiftState State() const { return {}; }
};

class EucJpReader : public Reader {
  public:
    static constexpr bool kShifts = false;

    bool PlainNext() const { return *p < 0x80; }

    unsigned Pair() const {
        if (Left() < 2) return 0;
        const unsigned row = p[0], cell = p[1];
        return IsGraphic(row) && IsGraphic(cell) ? row << 8 | cell : 0;
    }

    Block PairBlock() const { return EucBlock(p); }

    Unit Other() const {
        constexpr unsigned kKanaShift = 0x8E, kSupplementShift = 0x8F;
        const unsigned c = p[0];
        if (c < 0x80) return {Kind::kAscii, 1, c};
        if (c == kKanaShift && Left() >= 2 && IsKana(p[1])) return {Kind::kKana, 2, p[1]};
        if (c == kSupplementShift && Left() >= 3 && IsGraphic(p[1]) && IsGraphic(p[2]))
            return {Kind::kSupplement, 3, static_cast<unsigned>(p[1] << 8 | p[2])};
        return {Kind::kLost, 1};
    }

    bool IsCut() const {
        const unsigned c = p[0];
        if (Left() == 1) return IsGraphic(c) || c == 0x8E || c == 0x8F;
        return Left() == 2 && c == 0x8F && IsGraphic(p[1]);
    }
};

class ShiftJisReader : public Reader {
  public:
    static constexpr bool kShifts = false;

    bool PlainNext() const { return *p < 0x80; }

    unsigned Pair() const {
        if (Left() < 2) return 0;
        const unsigned lead = kShiftJisLead[p[0]], trail = kShiftJisTrail[p[1]];
        return lead != 0 && trail != 0 ? lead + trail : 0;
    }

    Block PairBlock() const { return ShiftJisBlock(p); }

    // Most pairs with a lead byte from 0xF0 on are vendor or user-defined characters. Few have a
    // place in JIS.
    Unit Other() const {
        const unsigned c = p[0];
        if (c < 0x80) return {Kind::kAscii, 1, c};
        if (IsKana(c)) return {Kind::kKana, 1, c};
        if (Left() >= 2 && c >= 0xF0 && c <= 0xFC && kShiftJisTrail[p[1]] != 0) {
            if (const unsigned pair = FromExtension(c << 8 | p[1])) return {Kind::kPair, 2, pair};
            return {Kind::kLost, 2};
        }
        // Stepping treats this pair as a character, although it is in no row.
        if (Left() >= 2 && IsLead(c) && p[1] == 0x7F) return {Kind::kLost, 2};
        return {Kind::kLost, 1};
    }

    bool IsCut() const { return Left() == 1 && (IsLead(*p) || (*p >= 0xF0 && *p <= 0xFC)); }
};

// Besides its escape sequences, JIS text may switch to half-width katakana with shift-out, or
// contain them as 8-bit bytes. Every line ends in ASCII, with or without an escape sequence.
class JisReader : public Reader {
  public:
    static constexpr bool kShifts = true;

    bool PlainNext() const { return m_set == Set::kAscii && IsPlain(*p); }

    unsigned Pair() const {
        if (m_set != Set::kKanji || Left() < 2) return 0;
        const unsigned row = p[0], cell = p[1];
        return IsGraphic7(row) && IsGraphic7(cell) ? row << 8 | cell | 0x8080 : 0;
    }

    Block PairBlock() const {
        const Block block = JisBlock(p);
        return {block.pairs, m_set == Set::kKanji ? block.count : 0};
    }

    Unit Other() {
        const unsigned c = p[0];
        if (c == kEscape) return ReadEscape();
        if (c == kShiftOut || c == kShiftIn) {
            m_set = c == kShiftOut ? Set::kKana : m_designated;
            return {Kind::kNothing, 1};
        }
        if (c >= 0x80) return IsKana(c) ? Unit{Kind::kKana, 1, c} : Unit{Kind::kLost, 1};
        if (c == '\n' || c == '\r') m_set = m_designated = Set::kAscii;
        if (m_set == Set::kAscii || !IsGraphic7(c)) return {Kind::kAscii, 1, c};
        if (m_set == Set::kKana && IsKana(c | 0x80)) return {Kind::kKana, 1, c | 0x80};
        if (m_set == Set::kSupplement && Left() >= 2 && IsGraphic7(p[1]))
            return {Kind::kSupplement, 2, c << 8 | p[1] | 0x8080};
        return {Kind::kLost, 1};
    }

    static bool IsPlain(unsigned c) {
        return c < 0x80 && c != kEscape && c != kShiftOut && c != kShiftIn;
    }

    void Begin(const ShiftState& state) {
        m_set = static_cast<Set>(state.set);
        m_designated = static_cast<Set>(state.designated);
    }
    ShiftState State() const {
        return {static_cast<std::uint16_t>(m_set), static_cast<std::uint8_t>(m_designated), 0, 0};
    }

    bool IsCut() const {
        if (*p == kEscape) return EscapeGoesOn(p, Left());
        return Left() == 1 && (m_set == Set::kKanji || m_set == Set::kSupplement) && IsGraphic7(*p);
    }

  private:
    Unit ReadEscape() {
        const Escape* escape = FindEscape(p, Left());
        if (escape == nullptr) return {Kind::kAscii, 1, kEscape};
        if (escape->designates) m_set = m_designated = escape->set;
        return {Kind::kNothing, static_cast<unsigned>(1 + escape->text.size())};
    }

    Set m_set = Set::kAscii, m_designated = Set::kAscii;
};

}  // namespace genutil::jis
