// ASCII runs between bytes and 16-bit units, 16 characters at a time.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

#include "genutil/simd.h"

namespace genutil {

static_assert(std::endian::native == std::endian::little, "units are stored as UTF-16LE");

// The number of characters, besides the current one, that must remain for a loop to process a block
// of 16.
constexpr std::ptrdiff_t kBlockAhead = 15;

// Returns how many characters a loop may convert without checking either end.
// @param left number of characters to convert.
// @param room number of characters that fit if each takes its maximum.
// @param ahead number of characters that the loop reads and writes ahead.
inline std::ptrdiff_t SafeCount(std::ptrdiff_t left, std::ptrdiff_t room, std::ptrdiff_t ahead) {
    const std::ptrdiff_t n = left < room ? left : room;
    return n < ahead ? 0 : n - ahead;
}

// Units may be at any address, because conversions write them directly into the caller's bytes.
inline unsigned LoadUnit(const unsigned char* p) {
    std::uint16_t unit;
    std::memcpy(&unit, p, sizeof unit);
    return unit;
}
inline void StoreUnit(unsigned char* p, unsigned unit) {
    const std::uint16_t value = static_cast<std::uint16_t>(unit);
    std::memcpy(p, &value, sizeof value);
}

// Each function below reads a block of 16 (or 8) characters, writes a block whatever they are, and
// returns the number of ASCII characters at its start. Only those are converted.
inline unsigned AsciiPrefix(unsigned notAscii, unsigned block) {
    return static_cast<unsigned>(std::countr_zero(notAscii | 1u << block));
}

inline unsigned WidenAscii(const unsigned char* bytes, unsigned char* units) {
    const simd::Vector block = simd::Load(bytes);
    simd::Store(units, simd::WidenLow(block));
    simd::Store(units + 16, simd::WidenHigh(block));
    return AsciiPrefix(simd::TopBits(block), 16);
}

inline unsigned WidenAscii8(const unsigned char* bytes, unsigned char* units) {
    const simd::Vector block = simd::LoadHalf(bytes);
    simd::Store(units, simd::WidenLow(block));
    return AsciiPrefix(simd::TopBits(block), 8);
}

// Returns a mask in which bit i is set if unit i of the first vector is not ASCII, and bit i + 8
// likewise for the second vector.
inline unsigned NotAscii(simd::Vector low, simd::Vector high) {
    const simd::Vector beyond = simd::Splat16(0xFF80), zero = simd::Zero();
    const simd::Vector ascii =
        simd::NarrowSigned(simd::Equal16(low & beyond, zero), simd::Equal16(high & beyond, zero));
    return ~simd::TopBits(ascii) & 0xFFFF;
}

inline unsigned NarrowAscii(const unsigned char* units, unsigned char* bytes) {
    const simd::Vector low = simd::Load(units), high = simd::Load(units + 16);
    simd::Store(bytes, simd::NarrowUnsigned(low, high));
    return AsciiPrefix(NotAscii(low, high), 16);
}

inline unsigned NarrowAscii8(const unsigned char* units, unsigned char* bytes) {
    const simd::Vector block = simd::Load(units);
    simd::StoreHalf(bytes, simd::NarrowUnsigned(block, block));
    return AsciiPrefix(NotAscii(block, block) & 0xFF, 8);
}

inline unsigned CopyAscii(const unsigned char* from, unsigned char* to) {
    const simd::Vector block = simd::Load(from);
    simd::Store(to, block);
    return AsciiPrefix(simd::TopBits(block), 16);
}

inline unsigned CopyAscii8(const unsigned char* from, unsigned char* to) {
    const simd::Vector block = simd::LoadHalf(from);
    simd::StoreHalf(to, block);
    return AsciiPrefix(simd::TopBits(block), 8);
}

}  // namespace genutil
