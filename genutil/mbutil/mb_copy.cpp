// Copying without splitting a character, and validation.
#include <bit>
#include <cstddef>
#include <cstring>

#include "genutil/mbutil/character_blocks.h"

using namespace genutil;

namespace {

// Same as strncpy, whose name would cause compiler warnings about missing terminators.
void CopyPadded(char* dst, const char* src, std::size_t length, std::size_t n) {
    std::memmove(dst, src, length);
    std::memset(dst + length, 0, n - length);
}

}  // namespace

unsigned mbstrncpyi(char* dst, const char* src, unsigned n) {
    if (!dst || !src) return 0;
    EnsureInitialised();
    const void* end = n ? std::memchr(src, 0, n) : src;
    if (end) {
        const std::size_t length =
            n ? static_cast<std::size_t>(static_cast<const char*>(end) - src) : 0;
        CopyPadded(dst, src, length, n);
        return static_cast<unsigned>(length);
    }
    const unsigned cut = src[n] ? mbidx(src, n) : n;
    std::memmove(dst, src, cut);
    if (cut < n) dst[cut] = 0;
    return cut;
}

char* mbstrncpy(char* dst, const char* src, unsigned n) {
    mbstrncpyi(dst, src, n);
    return dst;
}

int mbvalidatestring(const char* s, unsigned* badIndex, int codeSet) {
    EnsureInitialised();
    if (!g_codeSetState.multiByte) return 1;
    if (!s || !badIndex) return 0;
    const StepTable* table = StepTableOf(codeSet);
    if (!table) return 1;
    BlockWalker walker(*table, Bytes(s));
    while (walker.Next())
        if (const std::uint64_t invalid = walker.Invalid()) {
            *badIndex = static_cast<unsigned>(walker.Position()) +
                        static_cast<unsigned>(std::countr_zero(invalid));
            return 0;
        }
    return 1;
}
