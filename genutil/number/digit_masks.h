// Digits and symbols of a short text, 16 bytes at a time: no branch depends on a single byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "genutil/simd.h"

namespace genutil {

// Masks in which bit i is for byte i. All bits after the text are 0.
struct DigitMasks {
    std::uint64_t digits, decimals, separators;
    std::uint64_t points;  // "." for any symbols
};
constexpr std::size_t kMaskedText = 63;  // maximum number of bytes; a mask of all of them has a
                                         // spare bit

inline std::uint64_t BitsBelow(std::size_t n) {  // n is at most 63
    return (std::uint64_t{1} << n) - 1;
}

// Loads n bytes, 1 to 15, followed by zeroes. Reads no other byte.
inline simd::Vector LoadBeginning(const char* p, std::size_t n) {
    std::uint64_t low = 0, high = 0;
    if (n >= 8) {
        std::memcpy(&low, p, 8);
        std::memcpy(&high, p + n - 8, 8);
        high = n == 8 ? 0 : high >> 8 * (16 - n);
    } else if (n >= 4) {
        std::uint32_t first, last;
        std::memcpy(&first, p, 4);
        std::memcpy(&last, p + n - 4, 4);
        low = first | std::uint64_t{last} << 8 * (n - 4);
    } else {
        for (std::size_t i = 0; i < n; ++i)
            low |= std::uint64_t{static_cast<unsigned char>(p[i])} << 8 * i;
    }
    return simd::Join(low, high);
}

inline DigitMasks MasksOf(std::string_view text, char decimal, char separator) {
    DigitMasks masks{};
    const simd::Vector decimals = simd::Splat8(decimal), separators = simd::Splat8(separator);
    const simd::Vector point = simd::Splat8('.');
    const auto bits = [](simd::Vector matches) { return std::uint64_t{simd::TopBits(matches)}; };
    for (std::size_t at = 0; at < text.size(); at += 16) {
        const std::size_t left = text.size() - at;
        const simd::Vector block =
            left >= 16 ? simd::Load(text.data() + at) : LoadBeginning(text.data() + at, left);
        masks.digits |= bits(simd::InRange8(block, '0', '9')) << at;
        masks.decimals |= bits(simd::Equal8(block, decimals)) << at;
        masks.separators |= bits(simd::Equal8(block, separators)) << at;
        masks.points |= bits(simd::Equal8(block, point)) << at;
    }
    const std::uint64_t all = BitsBelow(text.size());
    masks.decimals &= all;
    masks.separators &= all;
    return masks;
}

}  // namespace genutil
