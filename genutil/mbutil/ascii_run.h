// ASCII at the start of a text, 16 bytes at a time. Most text in any code set has long runs of it.
#pragma once

#include <bit>
#include <cstddef>

#include "genutil/simd.h"

namespace genutil {

// Returns the top bits of 16 bytes, the first byte's in bit 0. The result is 0 if all are ASCII.
inline unsigned HighBits(const unsigned char* p) {
    return simd::TopBits(simd::Load(p));
}

// Returns the length of the ASCII run at the start of n bytes.
inline std::size_t AsciiRun(const unsigned char* p, std::size_t n) {
    std::size_t i = 0;
    for (; i + 16 <= n; i += 16)
        if (const unsigned high = HighBits(p + i))
            return i + static_cast<unsigned>(std::countr_zero(high));
    while (i < n && p[i] < 0x80) ++i;
    return i;
}

// Copies the ASCII run at the start of n bytes and returns its length. May write any of the n bytes
// of dst.
inline std::size_t CopyAsciiRun(unsigned char* dst, const unsigned char* src, std::size_t n) {
    std::size_t i = 0;
    for (; i + 16 <= n; i += 16) {
        const simd::Vector block = simd::Load(src + i);
        simd::Store(dst + i, block);
        if (const unsigned high = simd::TopBits(block))
            return i + static_cast<unsigned>(std::countr_zero(high));
    }
    for (; i < n && src[i] < 0x80; ++i) dst[i] = src[i];
    return i;
}

}  // namespace genutil
