// Eight kanji at a time: the arithmetic of jis.h on all lanes of a register. The lanes hold a pair
// as it lies in memory, its first byte low.
#pragma once

#include <emmintrin.h>

#include <bit>

namespace genutil::jis {

constexpr unsigned kBlock = 16;  // bytes

// Kanji as EUC pairs, and how many lanes from the first on really hold one.
struct Block {
    __m128i pairs;
    unsigned count;
};

inline __m128i LoadBlock(const unsigned char* p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

// Of bytes: all ones where low <= byte <= high.
inline __m128i InRange(__m128i bytes, int low, int high) {
    const __m128i above = _mm_sub_epi8(bytes, _mm_set1_epi8(static_cast<char>(low)));
    const __m128i span = _mm_set1_epi8(static_cast<char>(high - low));
    return _mm_cmpeq_epi8(_mm_min_epu8(above, span), above);
}

// The number of lanes before the first with a byte that is not all ones.
inline unsigned LeadingPairs(__m128i valid) {
    const unsigned bad = ~static_cast<unsigned>(_mm_movemask_epi8(valid)) | 1u << kBlock;
    return static_cast<unsigned>(std::countr_zero(bad)) / 2;
}

inline Block EucBlock(const unsigned char* p) {
    const __m128i pairs = LoadBlock(p);
    return {pairs, LeadingPairs(InRange(pairs, 0xA1, 0xFE))};
}

inline Block JisBlock(const unsigned char* p) {
    const __m128i block = LoadBlock(p);
    return {_mm_or_si128(block, _mm_set1_epi8(static_cast<char>(0x80))),
            LeadingPairs(InRange(block, 0x21, 0x7E))};
}

inline Block ShiftJisBlock(const unsigned char* p) {
    const __m128i block = LoadBlock(p), lowByte = _mm_set1_epi16(0xFF);
    const __m128i lead = _mm_and_si128(block, lowByte), trail = _mm_srli_epi16(block, 8);

    const __m128i leadValid = InRange(_mm_xor_si128(block, _mm_set1_epi8(0x20)), 0xA1, 0xCF);
    const __m128i trailValid =
        _mm_andnot_si128(_mm_cmpeq_epi8(block, _mm_set1_epi8(0x7F)), InRange(block, 0x40, 0xFC));
    const __m128i valid =
        _mm_or_si128(_mm_and_si128(lowByte, leadValid), _mm_andnot_si128(lowByte, trailValid));

    const __m128i second = _mm_cmpgt_epi16(trail, _mm_set1_epi16(0x9E));
    const __m128i gap =
        _mm_and_si128(_mm_cmpgt_epi16(lead, _mm_set1_epi16(0xDF)), _mm_set1_epi16(0xE0 - 0xA0));
    const __m128i row = _mm_slli_epi16(_mm_sub_epi16(lead, gap), 1);
    // Comparisons give -1: to subtract one adds 1.
    const __m128i rowByte =
        _mm_sub_epi16(_mm_add_epi16(row, _mm_set1_epi16(0xA1 - 2 * 0x81)), second);
    const __m128i first = _mm_add_epi16(_mm_add_epi16(trail, _mm_set1_epi16(0xA1 - 0x40)),
                                        _mm_cmpgt_epi16(trail, _mm_set1_epi16(0x7F)));
    const __m128i cellByte =
        _mm_sub_epi16(first, _mm_and_si128(second, _mm_set1_epi16(0x9F - 0x40 - 1)));
    return {_mm_or_si128(rowByte, _mm_slli_epi16(cellByte, 8)), LeadingPairs(valid)};
}

inline __m128i ToJisBlock(__m128i pairs) {
    return _mm_and_si128(pairs, _mm_set1_epi8(0x7F));
}

inline __m128i ToShiftJisBlock(__m128i pairs) {
    const __m128i row =
        _mm_sub_epi16(_mm_and_si128(pairs, _mm_set1_epi16(0xFF)), _mm_set1_epi16(0xA1));
    const __m128i cell = _mm_srli_epi16(pairs, 8), one = _mm_set1_epi16(1);
    const __m128i gap =
        _mm_and_si128(_mm_cmpgt_epi16(row, _mm_set1_epi16(61)), _mm_set1_epi16(0xE0 - 0xA0));
    const __m128i lead =
        _mm_add_epi16(_mm_add_epi16(_mm_srli_epi16(row, 1), _mm_set1_epi16(0x81)), gap);
    const __m128i second = _mm_cmpeq_epi16(_mm_and_si128(row, one), one);
    const __m128i shift = _mm_sub_epi16(_mm_set1_epi16(0x40 - 0x9F),
                                        _mm_cmpgt_epi16(cell, _mm_set1_epi16(0xA1 + 0x3E)));
    const __m128i trail = _mm_add_epi16(_mm_add_epi16(cell, _mm_set1_epi16(0x9F - 0xA1)),
                                        _mm_andnot_si128(second, shift));
    return _mm_or_si128(lead, _mm_slli_epi16(trail, 8));
}

}  // namespace genutil::jis
