// Operations on 16 bytes at a time.
//
// A Vector holds 16 bytes, or eight 16-bit words with the low byte first. The suffixes 8 and 16
// give the width of the lanes. A comparison sets each lane to all ones or to zero.
//
//     const simd::Vector block = simd::Load(p);
//     const simd::Vector escapes = simd::Equal8(block, simd::Splat8(0x1B));
//     if (const unsigned stops = simd::TopBits(block | escapes)) return std::countr_zero(stops);
//
// There are three forms: SSE2 on x86, NEON on AArch64, and a portable one for every other target,
// which needs only the vector types of GCC and Clang. GENUTIL_PORTABLE_SIMD selects it on any
// target.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

#if defined(GENUTIL_PORTABLE_SIMD)
#define GENUTIL_SIMD_FORM portable
#elif defined(__SSE2__)
#include <emmintrin.h>
#define GENUTIL_SIMD_FORM sse2
#define GENUTIL_SIMD_SSE2
#elif defined(__aarch64__) && defined(__ARM_NEON)
#include <arm_neon.h>
#define GENUTIL_SIMD_FORM neon
#define GENUTIL_SIMD_NEON
#else
#define GENUTIL_SIMD_FORM portable
#endif

static_assert(std::endian::native == std::endian::little, "a word has its low byte first");

namespace genutil::simd {

// One program may contain two forms. Each has its own names for the linker.
inline namespace GENUTIL_SIMD_FORM {

#if defined(GENUTIL_SIMD_SSE2)
using Register = __m128i;
#elif defined(GENUTIL_SIMD_NEON)
using Register = uint8x16_t;
#else
using Register [[gnu::vector_size(16)]] = std::uint8_t;
#endif

struct Vector {
    Register value;
};

// Reads 16 bytes from any address.
inline Vector Load(const void* from);
// Reads 8 bytes from any address and sets the upper 8 to zero.
inline Vector LoadHalf(const void* from);
// Writes 16 bytes to any address.
inline void Store(void* to, Vector v);
// Writes the lower 8 bytes to any address.
inline void StoreHalf(void* to, Vector v);

// Returns a vector of zeros.
inline Vector Zero();
// Sets every byte to the low 8 bits of a value.
inline Vector Splat8(int value);
// Sets every word to the low 16 bits of a value.
inline Vector Splat16(int value);
// Joins the lower and the upper 8 bytes.
inline Vector Join(std::uint64_t low, std::uint64_t high);

// Returns the bits that are in both.
inline Vector operator&(Vector a, Vector b);
// Returns the bits that are in either.
inline Vector operator|(Vector a, Vector b);
// Returns the bits that are in exactly one.
inline Vector operator^(Vector a, Vector b);
// Returns the bits of a that are not in b.
inline Vector AndNot(Vector a, Vector b);

// Compares bytes for equality.
inline Vector Equal8(Vector a, Vector b);
// Compares words for equality.
inline Vector Equal16(Vector a, Vector b);
// Compares signed words: a > b.
inline Vector Greater16(Vector a, Vector b);

// Adds bytes modulo 256.
inline Vector Add8(Vector a, Vector b);
// Adds words modulo 65536.
inline Vector Add16(Vector a, Vector b);
// Subtracts bytes modulo 256.
inline Vector Sub8(Vector a, Vector b);
// Subtracts words modulo 65536.
inline Vector Sub16(Vector a, Vector b);
// Returns the lesser of each two unsigned bytes.
inline Vector Min8(Vector a, Vector b);
// Returns the greater of each two unsigned bytes.
inline Vector Max8(Vector a, Vector b);
// Shifts words left by 1 to 15 bits.
template <int Bits>
inline Vector ShiftLeft16(Vector v);
// Shifts words right by 1 to 15 bits; zeros move in.
template <int Bits>
inline Vector ShiftRight16(Vector v);

// Widens the lower 8 bytes to words of the same unsigned values.
inline Vector WidenLow(Vector v);
// Widens the upper 8 bytes to words of the same unsigned values.
inline Vector WidenHigh(Vector v);
// Narrows signed words to unsigned bytes: values outside 0 to 255 become the nearest bound.
inline Vector NarrowUnsigned(Vector low, Vector high);
// Narrows signed words to signed bytes: values outside -128 to 127 become the nearest bound.
inline Vector NarrowSigned(Vector low, Vector high);

// Returns the top bits of the 16 bytes, the first byte's in bit 0.
inline unsigned TopBits(Vector v);

// Hints to the processor that the thread waits in a loop.
inline void Pause();

#if defined(GENUTIL_SIMD_SSE2)

inline Vector Load(const void* from) {
    return {_mm_loadu_si128(static_cast<const __m128i*>(from))};
}
inline Vector LoadHalf(const void* from) {
    return {_mm_loadl_epi64(static_cast<const __m128i*>(from))};
}
inline void Store(void* to, Vector v) {
    _mm_storeu_si128(static_cast<__m128i*>(to), v.value);
}
inline void StoreHalf(void* to, Vector v) {
    _mm_storel_epi64(static_cast<__m128i*>(to), v.value);
}

inline Vector Zero() {
    return {_mm_setzero_si128()};
}
inline Vector Splat8(int value) {
    return {_mm_set1_epi8(static_cast<char>(value))};
}
inline Vector Splat16(int value) {
    return {_mm_set1_epi16(static_cast<short>(value))};
}
inline Vector Join(std::uint64_t low, std::uint64_t high) {
    return {_mm_set_epi64x(static_cast<long long>(high), static_cast<long long>(low))};
}

inline Vector operator&(Vector a, Vector b) {
    return {_mm_and_si128(a.value, b.value)};
}
inline Vector operator|(Vector a, Vector b) {
    return {_mm_or_si128(a.value, b.value)};
}
inline Vector operator^(Vector a, Vector b) {
    return {_mm_xor_si128(a.value, b.value)};
}
inline Vector AndNot(Vector a, Vector b) {
    return {_mm_andnot_si128(b.value, a.value)};
}

inline Vector Equal8(Vector a, Vector b) {
    return {_mm_cmpeq_epi8(a.value, b.value)};
}
inline Vector Equal16(Vector a, Vector b) {
    return {_mm_cmpeq_epi16(a.value, b.value)};
}
inline Vector Greater16(Vector a, Vector b) {
    return {_mm_cmpgt_epi16(a.value, b.value)};
}

inline Vector Add8(Vector a, Vector b) {
    return {_mm_add_epi8(a.value, b.value)};
}
inline Vector Add16(Vector a, Vector b) {
    return {_mm_add_epi16(a.value, b.value)};
}
inline Vector Sub8(Vector a, Vector b) {
    return {_mm_sub_epi8(a.value, b.value)};
}
inline Vector Sub16(Vector a, Vector b) {
    return {_mm_sub_epi16(a.value, b.value)};
}
inline Vector Min8(Vector a, Vector b) {
    return {_mm_min_epu8(a.value, b.value)};
}
inline Vector Max8(Vector a, Vector b) {
    return {_mm_max_epu8(a.value, b.value)};
}
template <int Bits>
inline Vector ShiftLeft16(Vector v) {
    return {_mm_slli_epi16(v.value, Bits)};
}
template <int Bits>
inline Vector ShiftRight16(Vector v) {
    return {_mm_srli_epi16(v.value, Bits)};
}

inline Vector WidenLow(Vector v) {
    return {_mm_unpacklo_epi8(v.value, _mm_setzero_si128())};
}
inline Vector WidenHigh(Vector v) {
    return {_mm_unpackhi_epi8(v.value, _mm_setzero_si128())};
}
inline Vector NarrowUnsigned(Vector low, Vector high) {
    return {_mm_packus_epi16(low.value, high.value)};
}
inline Vector NarrowSigned(Vector low, Vector high) {
    return {_mm_packs_epi16(low.value, high.value)};
}

inline unsigned TopBits(Vector v) {
    return static_cast<unsigned>(_mm_movemask_epi8(v.value));
}

inline void Pause() {
    _mm_pause();
}

#elif defined(GENUTIL_SIMD_NEON)

inline uint16x8_t Words(Vector v) {
    return vreinterpretq_u16_u8(v.value);
}
inline int16x8_t SignedWords(Vector v) {
    return vreinterpretq_s16_u8(v.value);
}
inline Vector OfWords(uint16x8_t words) {
    return {vreinterpretq_u8_u16(words)};
}

inline Vector Load(const void* from) {
    return {vld1q_u8(static_cast<const std::uint8_t*>(from))};
}
inline Vector LoadHalf(const void* from) {
    return {vcombine_u8(vld1_u8(static_cast<const std::uint8_t*>(from)), vdup_n_u8(0))};
}
inline void Store(void* to, Vector v) {
    vst1q_u8(static_cast<std::uint8_t*>(to), v.value);
}
inline void StoreHalf(void* to, Vector v) {
    vst1_u8(static_cast<std::uint8_t*>(to), vget_low_u8(v.value));
}

inline Vector Zero() {
    return {vdupq_n_u8(0)};
}
inline Vector Splat8(int value) {
    return {vdupq_n_u8(static_cast<std::uint8_t>(value))};
}
inline Vector Splat16(int value) {
    return OfWords(vdupq_n_u16(static_cast<std::uint16_t>(value)));
}
inline Vector Join(std::uint64_t low, std::uint64_t high) {
    return {vcombine_u8(vcreate_u8(low), vcreate_u8(high))};
}

inline Vector operator&(Vector a, Vector b) {
    return {vandq_u8(a.value, b.value)};
}
inline Vector operator|(Vector a, Vector b) {
    return {vorrq_u8(a.value, b.value)};
}
inline Vector operator^(Vector a, Vector b) {
    return {veorq_u8(a.value, b.value)};
}
inline Vector AndNot(Vector a, Vector b) {
    return {vbicq_u8(a.value, b.value)};
}

inline Vector Equal8(Vector a, Vector b) {
    return {vceqq_u8(a.value, b.value)};
}
inline Vector Equal16(Vector a, Vector b) {
    return OfWords(vceqq_u16(Words(a), Words(b)));
}
inline Vector Greater16(Vector a, Vector b) {
    return OfWords(vcgtq_s16(SignedWords(a), SignedWords(b)));
}

inline Vector Add8(Vector a, Vector b) {
    return {vaddq_u8(a.value, b.value)};
}
inline Vector Add16(Vector a, Vector b) {
    return OfWords(vaddq_u16(Words(a), Words(b)));
}
inline Vector Sub8(Vector a, Vector b) {
    return {vsubq_u8(a.value, b.value)};
}
inline Vector Sub16(Vector a, Vector b) {
    return OfWords(vsubq_u16(Words(a), Words(b)));
}
inline Vector Min8(Vector a, Vector b) {
    return {vminq_u8(a.value, b.value)};
}
inline Vector Max8(Vector a, Vector b) {
    return {vmaxq_u8(a.value, b.value)};
}
template <int Bits>
inline Vector ShiftLeft16(Vector v) {
    return OfWords(vshlq_n_u16(Words(v), Bits));
}
template <int Bits>
inline Vector ShiftRight16(Vector v) {
    return OfWords(vshrq_n_u16(Words(v), Bits));
}

inline Vector WidenLow(Vector v) {
    return OfWords(vmovl_u8(vget_low_u8(v.value)));
}
inline Vector WidenHigh(Vector v) {
    return OfWords(vmovl_high_u8(v.value));
}
inline Vector NarrowUnsigned(Vector low, Vector high) {
    return {vqmovun_high_s16(vqmovun_s16(SignedWords(low)), SignedWords(high))};
}
inline Vector NarrowSigned(Vector low, Vector high) {
    const int8x16_t bytes = vqmovn_high_s16(vqmovn_s16(SignedWords(low)), SignedWords(high));
    return {vreinterpretq_u8_s8(bytes)};
}

// Each byte contributes the bit of its position in its half. The sum is the mask of the half.
inline unsigned TopBits(Vector v) {
    const uint8x8_t place = vcreate_u8(0x8040201008040201);
    const uint8x16_t top = vcltzq_s8(vreinterpretq_s8_u8(v.value));
    const unsigned low = vaddv_u8(vand_u8(vget_low_u8(top), place));
    const unsigned high = vaddv_u8(vand_u8(vget_high_u8(top), place));
    return low | high << 8;
}

inline void Pause() {
    asm volatile("yield");
}

#else

using UnsignedWords [[gnu::vector_size(16)]] = std::uint16_t;
using SignedWords [[gnu::vector_size(16)]] = std::int16_t;

template <class Lanes>
inline Lanes As(Vector v) {
    return reinterpret_cast<Lanes>(v.value);
}
template <class Lanes>
inline Vector Of(Lanes lanes) {
    return {reinterpret_cast<Register>(lanes)};
}

inline Vector Load(const void* from) {
    Vector v;
    std::memcpy(&v, from, 16);
    return v;
}
inline Vector LoadHalf(const void* from) {
    Vector v{};
    std::memcpy(&v, from, 8);
    return v;
}
inline void Store(void* to, Vector v) {
    std::memcpy(to, &v, 16);
}
inline void StoreHalf(void* to, Vector v) {
    std::memcpy(to, &v, 8);
}

inline Vector Zero() {
    return {Register{}};
}
inline Vector Splat8(int value) {
    return {Register{} + static_cast<std::uint8_t>(value)};
}
inline Vector Splat16(int value) {
    return Of(UnsignedWords{} + static_cast<std::uint16_t>(value));
}
inline Vector Join(std::uint64_t low, std::uint64_t high) {
    const std::uint64_t halves[] = {low, high};
    return Load(halves);
}

inline Vector operator&(Vector a, Vector b) {
    return {a.value & b.value};
}
inline Vector operator|(Vector a, Vector b) {
    return {a.value | b.value};
}
inline Vector operator^(Vector a, Vector b) {
    return {a.value ^ b.value};
}
inline Vector AndNot(Vector a, Vector b) {
    return {a.value & ~b.value};
}

inline Vector Equal8(Vector a, Vector b) {
    return Of(a.value == b.value);
}
inline Vector Equal16(Vector a, Vector b) {
    return Of(As<UnsignedWords>(a) == As<UnsignedWords>(b));
}
inline Vector Greater16(Vector a, Vector b) {
    return Of(As<SignedWords>(a) > As<SignedWords>(b));
}

inline Vector Add8(Vector a, Vector b) {
    return {a.value + b.value};
}
inline Vector Add16(Vector a, Vector b) {
    return Of(As<UnsignedWords>(a) + As<UnsignedWords>(b));
}
inline Vector Sub8(Vector a, Vector b) {
    return {a.value - b.value};
}
inline Vector Sub16(Vector a, Vector b) {
    return Of(As<UnsignedWords>(a) - As<UnsignedWords>(b));
}
inline Vector Min8(Vector a, Vector b) {
    return {a.value < b.value ? a.value : b.value};
}
inline Vector Max8(Vector a, Vector b) {
    return {a.value > b.value ? a.value : b.value};
}
template <int Bits>
inline Vector ShiftLeft16(Vector v) {
    return Of(As<UnsignedWords>(v) << Bits);
}
template <int Bits>
inline Vector ShiftRight16(Vector v) {
    return Of(As<UnsignedWords>(v) >> Bits);
}

inline Vector WidenLow(Vector v) {
    UnsignedWords words{};
    for (int i = 0; i < 8; ++i) words[i] = v.value[i];
    return Of(words);
}
inline Vector WidenHigh(Vector v) {
    UnsignedWords words{};
    for (int i = 0; i < 8; ++i) words[i] = v.value[i + 8];
    return Of(words);
}

// Narrows words to bytes after clamping each to the two bounds.
template <int Least, int Most>
inline Vector Narrow(Vector low, Vector high) {
    const auto narrowed = [](std::int16_t word) {
        return static_cast<std::uint8_t>(word < Least ? Least : word > Most ? Most : word);
    };
    Vector bytes{};
    for (int i = 0; i < 8; ++i) {
        bytes.value[i] = narrowed(As<SignedWords>(low)[i]);
        bytes.value[i + 8] = narrowed(As<SignedWords>(high)[i]);
    }
    return bytes;
}
inline Vector NarrowUnsigned(Vector low, Vector high) {
    return Narrow<0, 255>(low, high);
}
inline Vector NarrowSigned(Vector low, Vector high) {
    return Narrow<-128, 127>(low, high);
}

// The factor moves the bit of byte i to bit 56 + i. No two of its terms overlap.
inline unsigned TopBits(Vector v) {
    std::uint64_t halves[2];
    Store(halves, v);
    const auto bits = [](std::uint64_t bytes) {
        return static_cast<unsigned>((bytes >> 7 & 0x0101010101010101) * 0x0102040810204080 >> 56);
    };
    return bits(halves[0]) | bits(halves[1]) << 8;
}

inline void Pause() {}

#endif

// Compares unsigned bytes: low <= byte <= low + span.
inline Vector InSpan8(Vector v, Vector low, Vector span) {
    const Vector offset = Sub8(v, low);
    return Equal8(Min8(offset, span), offset);
}
// Compares unsigned bytes: low <= byte <= high.
inline Vector InRange8(Vector v, int low, int high) {
    return InSpan8(v, Splat8(low), Splat8(high - low));
}

}  // namespace GENUTIL_SIMD_FORM
}  // namespace genutil::simd

#undef GENUTIL_SIMD_FORM
#undef GENUTIL_SIMD_SSE2
#undef GENUTIL_SIMD_NEON
