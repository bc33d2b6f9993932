#include "genutil/mbutil/same_prefix.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "genutil/simd.h"

namespace genutil {
namespace {

constexpr std::size_t kBlock = 64;

// Converts ASCII capitals to lower case.
simd::Vector Lowered(simd::Vector bytes) {
    return simd::Add8(bytes, simd::InRange8(bytes, 'A', 'Z') & simd::Splat8('a' - 'A'));
}

// Masks of the bytes of a block that differ, and of those that differ by more than the case of a
// letter.
struct Differences {
    std::uint64_t any, beyondCase;
};
Differences Compare(const unsigned char* a, const unsigned char* b) {
    Differences d{0, 0};
    for (unsigned i = 0; i < kBlock; i += 16) {
        const simd::Vector x = simd::Load(a + i), y = simd::Load(b + i);
        const unsigned same = simd::TopBits(simd::Equal8(x, y));
        const unsigned sameNoCase = simd::TopBits(simd::Equal8(Lowered(x), Lowered(y)));
        d.any |= std::uint64_t{same ^ 0xFFFFu} << i;
        d.beyondCase |= std::uint64_t{sameNoCase ^ 0xFFFFu} << i;
    }
    return d;
}

// Returns the number of bytes before the first terminator of either text. The search is in windows,
// so that early differences stay cheap.
std::size_t CommonLength(const unsigned char* a, const unsigned char* b, std::size_t from,
                         std::size_t window) {
    const void* endA = std::memchr(a + from, 0, window);
    const std::size_t length =
        endA ? static_cast<std::size_t>(static_cast<const unsigned char*>(endA) - a)
             : from + window;
    const void* endB = length > from ? std::memchr(b + from, 0, length - from) : nullptr;
    return endB ? static_cast<std::size_t>(static_cast<const unsigned char*>(endB) - b) : length;
}

// Returns true if any of the differing bytes of the block at `at` is not a character by itself, and
// stores its position.
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
    // The difference may be at the end of a character in only one of the texts.
    return table ? std::min(align(*table, a, same), align(*table, b, same)) : same;
}

}  // namespace genutil
