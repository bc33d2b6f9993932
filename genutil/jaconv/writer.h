// Writing characters to text in EUC-JP, Shift-JIS and JIS. Each writer has
//
//     EnterAscii()  prepares for ASCII, which the caller then writes at p
//     Pair()        writes a kanji given as two EUC bytes
//     HasBlock()    true if PutBlock() may write a block of kanji after the last one
//     Supplement()  writes a character of JIS X 0212, if the code set has them (kHasSupplement)
//     Kana()        writes half-width katakana, given as one byte
//     Lost()        writes the substitute
//     Close()       ends the text
//     State()       the shift state, in which the next piece of the text begins
//
// If there is no room, they return false and write nothing of the character. `left` is the number
// of source bytes after the character. A writer takes the room, the shift state and the ending of a
// transfer.
#pragma once

#include <cstddef>

#include "genutil/jaconv/escapes.h"
#include "genutil/jaconv/jis.h"
#include "genutil/jaconv/kanji_lanes.h"
#include "genutil/mbutil/transcode.h"

namespace genutil::jis {

struct Writer {
    unsigned char* p;
    unsigned char* end;
    std::size_t Room() const { return static_cast<std::size_t>(end - p); }
    ShiftState State() const { return {}; }

    void Put(unsigned pair) {
        p[0] = static_cast<unsigned char>(pair >> 8);
        p[1] = static_cast<unsigned char>(pair);
        p += 2;
    }
    void PutByte(unsigned byte) { *p++ = static_cast<unsigned char>(byte); }
    void Store(simd::Vector pairs, unsigned count) {
        simd::Store(p, pairs);
        p += 2 * count;
    }
};

class EucJpWriter : public Writer {
  public:
    static constexpr bool kShifts = false;
    static constexpr bool kHasSupplement = true;

    explicit EucJpWriter(const Transfer& t) : Writer{t.dst, t.dstEnd} {}

    bool EnterAscii() { return true; }
    bool Pair(unsigned pair, std::size_t) {
        if (Room() < 2) return false;
        Put(pair);
        return true;
    }
    bool HasBlock() const { return Room() >= kBlock; }
    void PutBlock(const Block& block) { Store(block.pairs, block.count); }
    bool Supplement(unsigned pair, std::size_t) {
        if (Room() < 3) return false;
        PutByte(0x8F);
        Put(pair);
        return true;
    }
    bool Kana(unsigned kana, std::size_t left) { return Pair(0x8E00 | kana, left); }
    bool Lost(std::size_t left) { return Pair(kGeta, left); }
    bool Close() { return true; }
};

class ShiftJisWriter : public Writer {
  public:
    static constexpr bool kShifts = false;
    static constexpr bool kHasSupplement = false;

    explicit ShiftJisWriter(const Transfer& t) : Writer{t.dst, t.dstEnd} {}

    bool EnterAscii() { return true; }
    bool Pair(unsigned pair, std::size_t) {
        if (Room() < 2) return false;
        Put(ToShiftJis(pair));
        return true;
    }
    bool HasBlock() const { return Room() >= kBlock; }
    void PutBlock(const Block& block) { Store(ToShiftJisBlock(block.pairs), block.count); }
    bool Kana(unsigned kana, std::size_t) {
        if (Room() < 1) return false;
        PutByte(kana);
        return true;
    }
    bool Lost(std::size_t left) { return Pair(kGeta, left); }
    bool Close() { return true; }
};

// JIS needs up to 5 bytes for a byte of the source. A threefold transfer provides only 3. These are
// always sufficient, because a text that begins with 3 bytes of room for each byte of its source
// retains them, and one more while it is in a set other than ASCII:
//
//     ASCII            1 byte from ASCII, 4 from another set; paid by its own 3 and the extra one
//     kanji            2 bytes, 5 with an escape, of 6; the extra one remains
//     JIS X 0212       2 bytes, 6 with an escape, of 9
//     katakana         1 byte, 4 with an escape: too many for a katakana of one byte. It is written
//                      with an escape only if enough spare room has accumulated, and otherwise as
//                      an 8-bit byte, which every reader of JIS accepts. The same applies to the
//                      substitute for a single byte, which is "?" if there is no spare room.
//
// Any other transfer of a whole text may be interrupted before any character, so it always keeps 3
// bytes for the closing escape.
class JisWriter : public Writer {
  public:
    static constexpr bool kShifts = true;
    static constexpr bool kHasSupplement = true;

    explicit JisWriter(const Transfer& t)
        : Writer{t.dst, t.dstEnd},
          m_set(static_cast<Set>(t.writing.set)),
          m_threefold(t.threefold),
          m_reserve(t.ending == Ending::kWhole ? kEscapeLength : 0) {}
    ShiftState State() const { return {static_cast<std::uint16_t>(m_set), 0, 0, 0}; }

    bool EnterAscii() {
        if (m_set == Set::kAscii) return true;
        if (Room() < kEscapeLength) return false;
        Switch(Set::kAscii);
        return true;
    }

    bool Pair(unsigned pair, std::size_t) {
        const std::size_t cost = m_set == Set::kKanji ? 2 : kEscapeLength + 2;
        if (!Fits(cost, Set::kKanji)) return false;
        if (m_set != Set::kKanji) Switch(Set::kKanji);
        Put(pair & 0x7F7F);
        return true;
    }

    bool HasBlock() const { return Room() >= kBlock + kEscapeLength; }
    void PutBlock(const Block& block) { Store(ToJisBlock(block.pairs), block.count); }
    bool Supplement(unsigned pair, std::size_t) {
        const std::size_t cost = m_set == Set::kSupplement ? 2 : kEscapeLength + 1 + 2;
        if (!Fits(cost, Set::kSupplement)) return false;
        if (m_set != Set::kSupplement) Switch(Set::kSupplement);
        Put(pair & 0x7F7F);
        return true;
    }

    bool Kana(unsigned kana, std::size_t left) {
        const std::size_t cost = m_set == Set::kKana ? 1 : kEscapeLength + 1;
        if (m_threefold && !IsAssured(cost, Set::kKana, left)) return Byte(kana);
        if (!Fits(cost, Set::kKana)) return false;
        if (m_set != Set::kKana) Switch(Set::kKana);
        PutByte(kana & 0x7F);
        return true;
    }

    bool Lost(std::size_t left) {
        const std::size_t cost = m_set == Set::kKanji ? 2 : kEscapeLength + 2;
        if (m_threefold && !IsAssured(cost, Set::kKanji, left)) return Byte('?');
        return Pair(kGeta, left);
    }

    bool Close() { return EnterAscii(); }

  private:
    static constexpr std::size_t kEscapeLength = 3;

    bool IsAssured(std::size_t cost, Set set, std::size_t left) const {
        const std::size_t one = left != 0 && set != Set::kAscii;
        return Room() >= cost && Room() - cost >= 3 * left + one;
    }

    bool Fits(std::size_t cost, Set set) const {
        if (m_threefold) return true;
        if (Room() < cost) return false;
        return Room() - cost >= (set == Set::kAscii ? 0 : m_reserve);
    }

    // Writes a single byte in ASCII.
    bool Byte(unsigned byte) {
        if (!EnterAscii() || Room() < 1) return false;
        PutByte(byte);
        return true;
    }

    void Switch(Set set) {
        PutByte(kEscape);
        if (set == Set::kSupplement) PutByte('$');
        PutByte(set == Set::kKanji ? '$' : '(');
        PutByte(set == Set::kKanji || set == Set::kAscii ? 'B' : set == Set::kKana ? 'I' : 'D');
        m_set = set;
    }

    Set m_set;
    const bool m_threefold;
    const std::size_t m_reserve;
};

}  // namespace genutil::jis
