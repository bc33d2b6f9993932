#include "genutil/mbutil/same_prefix.h"

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cstring>

namespace genutil {
namespace {

constexpr std::size_t kBlock = 64;

__m128i Load(const unsigned char* p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

// Capitals of ASCII in lower case; all other bytes as they are.
__m128i Lowered(__m128i bytes) {
    const __m128i offset = _mm_sub_epi8(bytes, _mm_set1_epi8('A'));
    const __m128i capital = _mm_cmpeq_epi8(_mm_min_epu8(offset, _mm_set1_epi8('Z' - 'A')), offset);
    return _mm_add_epi8(bytes, _mm_and_si128(capital, _mm_set1_epi8('a' - 'A')));
}

// Bytes of a block that differ, and those that differ by more than the case of a letter.
struct Differences {
    std::uint64_t any, beyondCase;
};
Differences Compare(const unsigned char* a, const unsigned char* b) {
    Differences d{0, 0};
    for (unsigned i = 0; i < kBlock; i += 16) {
        const __m128i x = Load(a + i), y = Load(b + i);
        const auto same = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(x, y)));
        const auto sameNoCase =
            static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(Lowered(x), Lowered(y))));
        d.any |= std::uint64_t{same ^ 0xFFFFu} << i;
        d.beyondCase |= std::uint64_t{sameNoCase ^ 0xFFFFu} << i;
    }
    return d;
}

// Bytes before the terminator of either text, found in steps so that early differences stay cheap.
std::size_t CommonLength(const unsigned char* a, const unsigned char* b, std::size_t from,
                         std::size_t window) {
    const void* endA = std::memchr(a + from, 0, window);
    const std::size_t length =
        endA ? static_cast<std::size_t>(static_cast<const unsigned char*>(endA) - a)
             : from + window;
    const void* endB = length > from ? std::memchr(b + from, 0, length - from) : nullptr;
    return endB ? static_cast<std::size_t>(static_cast<const unsigned char*>(endB) - b) : length;
}

// Whether any of the differing bytes of the block at `at` is no character by itself, and which.
bool CaseOfTrailDiffers(const StepTable& table, Alignment align, const unsigned char* a,
                        std::size_t at, std::uint64_t differing, std::size_t* where) {
    for (; differing; differing &= differing - 1) {
        *where = at + static_cast<unsigned>(std::countr_zero(differing));
        if (align(table, a, *where) != *where) return true;
    }
    return false;
}

std::size_t SameBytes(const unsigned char* a, const unsigned char* b, std::size_t limit,
                      const StepTable* table, Alignment align) {
    std::size_t at = 0, known = 0, window = kBlock, differs = 0;
    for (;;) {
        if (known - at < kBlock) {
            if (known < at) known = at;
            const std::size_t left = limit - known;
            const std::size_t reach = left < window ? left : window;
            const std::size_t length = reach ? CommonLength(a, b, known, reach) : known;
            if (length - known < reach || length - at < kBlock) return at;
            known = length;
            window = window < 4096 ? window * 4 : window;
        }
        const Differences d = Compare(a + at, b + at);
        if (!d.any) {
            at += kBlock;
            continue;
        }
        if (d.beyondCase) return at + static_cast<unsigned>(std::countr_zero(d.any));
        if (table && CaseOfTrailDiffers(*table, align, a, at, d.any, &differs)) return differs;
        at += kBlock;
    }
}

}  // namespace

std::size_t SamePrefixNoCase(const unsigned char* a, const unsigned char* b, std::size_t limit,
                             const StepTable* table, Alignment align) {
    const std::size_t same = SameBytes(a, b, limit, table, align);
    // What differs may be the end of a character in one text and none in the other.
    return table ? std::min(align(*table, a, same), align(*table, b, same)) : same;
}

}  // namespace genutil
