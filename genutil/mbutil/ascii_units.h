// ASCII runs between bytes and 16-bit units, 16 characters at a time.
#pragma once

#include <emmintrin.h>

#include <bit>
#include <cstdint>
#include <cstring>

namespace genutil {

static_assert(std::endian::native == std::endian::little, "units are stored as UTF-16LE");

// A loop that has this many characters more to go than one may use a block of 16.
constexpr std::ptrdiff_t kBlockAhead = 15;

// How many of `left` characters a loop may convert without a look at either end, when there is room
// for what `room` of them become at most, and it reads and writes `ahead` characters ahead.
inline std::ptrdiff_t SafeCount(std::ptrdiff_t left, std::ptrdiff_t room, std::ptrdiff_t ahead) {
    const std::ptrdiff_t n = left < room ? left : room;
    return n < ahead ? 0 : n - ahead;
}

// Units lie at any address: conversions write them straight into the caller's bytes.
inline unsigned LoadUnit(const unsigned char* p) {
    std::uint16_t unit;
    std::memcpy(&unit, p, sizeof unit);
    return unit;
}
inline void StoreUnit(unsigned char* p, unsigned unit) {
    const std::uint16_t value = static_cast<std::uint16_t>(unit);
    std::memcpy(p, &value, sizeof value);
}

// Each reads a block of 16 (or 8) characters, writes one whatever they are, and returns how many of
// them, from the first on, are ASCII: only those are converted.
inline unsigned AsciiPrefix(unsigned notAscii, unsigned block) {
    return static_cast<unsigned>(std::countr_zero(notAscii | 1u << block));
}

inline unsigned WidenAscii(const unsigned char* bytes, unsigned char* units) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
    const __m128i zero = _mm_setzero_si128();
    _mm_storeu_si128(reinterpret_cast<__m128i*>(units), _mm_unpacklo_epi8(block, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(units + 16), _mm_unpackhi_epi8(block, zero));
    return AsciiPrefix(static_cast<unsigned>(_mm_movemask_epi8(block)), 16);
}

inline unsigned WidenAscii8(const unsigned char* bytes, unsigned char* units) {
    const __m128i block = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(units),
                     _mm_unpacklo_epi8(block, _mm_setzero_si128()));
    return AsciiPrefix(static_cast<unsigned>(_mm_movemask_epi8(block)), 8);
}

// Bit i of the low 8 says that unit i is no ASCII; so does bit i + 8 of the second register's.
inline unsigned NotAscii(__m128i low, __m128i high) {
    const __m128i beyond = _mm_set1_epi16(static_cast<short>(0xFF80)), zero = _mm_setzero_si128();
    const __m128i ascii = _mm_packs_epi16(_mm_cmpeq_epi16(_mm_and_si128(low, beyond), zero),
                                          _mm_cmpeq_epi16(_mm_and_si128(high, beyond), zero));
    return ~static_cast<unsigned>(_mm_movemask_epi8(ascii)) & 0xFFFF;
}

inline unsigned NarrowAscii(const unsigned char* units, unsigned char* bytes) {
    const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units));
    const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units + 16));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes), _mm_packus_epi16(low, high));
    return AsciiPrefix(NotAscii(low, high), 16);
}

inline unsigned NarrowAscii8(const unsigned char* units, unsigned char* bytes) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(bytes), _mm_packus_epi16(block, block));
    return AsciiPrefix(NotAscii(block, block) & 0xFF, 8);
}

inline unsigned CopyAscii(const unsigned char* from, unsigned char* to) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), block);
    return AsciiPrefix(static_cast<unsigned>(_mm_movemask_epi8(block)), 16);
}

inline unsigned CopyAscii8(const unsigned char* from, unsigned char* to) {
    const __m128i block = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), block);
    return AsciiPrefix(static_cast<unsigned>(_mm_movemask_epi8(block)), 8);
}

}  // namespace genutil
