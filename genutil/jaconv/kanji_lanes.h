// Conversion of eight kanji at a time: the arithmetic of jis.h on all lanes of a register. A lane
// contains a pair as it is stored in memory, with its first byte low.
#pragma once

#include <bit>

#include "genutil/simd.h"

namespace genutil::jis {

constexpr unsigned kBlock = 16;  // bytes

// Kanji as EUC pairs, and the number of lanes at the start that are valid pairs.
struct Block {
    simd::Vector pairs;
    unsigned count;
};

// Returns the number of lanes before the first one with a byte that is not all ones.
inline unsigned LeadingPairs(simd::Vector valid) {
    const unsigned bad = ~simd::TopBits(valid) | 1u << kBlock;
    return static_cast<unsigned>(std::countr_zero(bad)) / 2;
}

inline Block EucBlock(const unsigned char* p) {
    const simd::Vector pairs = simd::Load(p);
    return {pairs, LeadingPairs(simd::InRange8(pairs, 0xA1, 0xFE))};
}

inline Block JisBlock(const unsigned char* p) {
    const simd::Vector block = simd::Load(p);
    return {block | simd::Splat8(0x80), LeadingPairs(simd::InRange8(block, 0x21, 0x7E))};
}

inline Block ShiftJisBlock(const unsigned char* p) {
    using namespace simd;
    const Vector block = Load(p), lowByte = Splat16(0xFF);
    const Vector lead = block & lowByte, trail = ShiftRight16<8>(block);

    const Vector leadValid = InRange8(block ^ Splat8(0x20), 0xA1, 0xCF);
    const Vector trailValid = AndNot(InRange8(block, 0x40, 0xFC), Equal8(block, Splat8(0x7F)));
    const Vector valid = (lowByte & leadValid) | AndNot(trailValid, lowByte);

    const Vector second = Greater16(trail, Splat16(0x9E));
    const Vector gap = Greater16(lead, Splat16(0xDF)) & Splat16(0xE0 - 0xA0);
    const Vector row = ShiftLeft16<1>(Sub16(lead, gap));
    // Comparisons give -1, so subtracting one adds 1.
    const Vector rowByte = Sub16(Add16(row, Splat16(0xA1 - 2 * 0x81)), second);
    const Vector first = Add16(Add16(trail, Splat16(0xA1 - 0x40)), Greater16(trail, Splat16(0x7F)));
    const Vector cellByte = Sub16(first, second & Splat16(0x9F - 0x40 - 1));
    return {rowByte | ShiftLeft16<8>(cellByte), LeadingPairs(valid)};
}

inline simd::Vector ToJisBlock(simd::Vector pairs) {
    return pairs & simd::Splat8(0x7F);
}

inline simd::Vector ToShiftJisBlock(simd::Vector pairs) {
    using namespace simd;
    const Vector row = Sub16(pairs & Splat16(0xFF), Splat16(0xA1));
    const Vector cell = ShiftRight16<8>(pairs), one = Splat16(1);
    const Vector gap = Greater16(row, Splat16(61)) & Splat16(0xE0 - 0xA0);
    const Vector lead = Add16(Add16(ShiftRight16<1>(row), Splat16(0x81)), gap);
    const Vector second = Equal16(row & one, one);
    const Vector shift = Sub16(Splat16(0x40 - 0x9F), Greater16(cell, Splat16(0xA1 + 0x3E)));
    const Vector trail = Add16(Add16(cell, Splat16(0x9F - 0xA1)), AndNot(shift, second));
    return lead | ShiftLeft16<8>(trail);
}

}  // namespace genutil::jis
