// Lengths of a text in another encoding, and decoding of percent escapes.
#include <algorithm>
#include <cstddef>
#include <cstring>

#include "genutil/mbutil/scratch.h"
#include "genutil/mbutil/step.h"

using namespace genutil;

namespace {

// Returns the length that the lead byte of a UTF-8 sequence promises, or 1 for a byte that does not
// begin one.
unsigned Utf8Need(unsigned char lead) {
    if (lead < 0xC0 || lead >= 0xFE) return 1;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF8 ? 4 : lead < 0xFC ? 5 : 6;
}

// In EUC-JP a half-width katakana takes two bytes. A lead byte counts as a pair, whatever follows.
std::size_t LengthInEucJp(const unsigned char* p) {
    std::size_t length = 0;
    for (; *p; ++p) {
        const bool lead = isleadbyteExt(*p, mbShiftJis) != 0;
        length += lead || (*p >= 0xA1 && *p <= 0xDF) ? 2 : 1;
        if (lead && p[1]) ++p;
    }
    return length;
}

// Returns the length of a text after conversion, or 0 if allocation fails.
std::size_t ConvertedLength(const char* s, int from, int to, std::size_t length) {
    const Scratch scratch(ConvertedSize(length));
    if (!scratch.Bytes()) return 0;
    return std::max(std::strlen(convertStrExt(s, from, scratch.Bytes(), to)), length);
}

int UpperHexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

}  // namespace

unsigned UTF8Limit(const char* s, unsigned maxBytes) {
    if (!s) return 0;
    const void* end = maxBytes ? std::memchr(s, 0, maxBytes) : nullptr;
    if (end) return static_cast<unsigned>(static_cast<const char*>(end) - s);
    if (!s[maxBytes]) return maxBytes;
    unsigned count = 0;
    for (unsigned need; count < maxBytes; count += need) {
        need = Utf8Need(Bytes(s)[count]);
        if (need > maxBytes - count) break;
    }
    return count;
}

unsigned MaxStringLengthOnWinAndUnix(const char* s) {
    if (!s) return 0;
    EnsureInitialised();
    const std::size_t length = std::strlen(s);
    std::size_t result = length;
    switch (g_codeSetState.codeSet) {
        case mbShiftJis:
            result = std::max(LengthInEucJp(Bytes(s)), length);
            break;
        case mbBig5:
            result = ConvertedLength(s, mbBig5, mbEucTw, length);
            break;
        case mbEucTw:
            result = ConvertedLength(s, mbEucTw, mbBig5, length);
            break;
        default:
            break;
    }
    return static_cast<unsigned>(result);
}

unsigned mbUrlDecode(const char* src, char** out) {
    if (!src || !out) return 0;
    char* decoded = static_cast<char*>(Allocate(std::uint64_t{std::strlen(src)} + 1));
    if (!decoded) return 0;
    char* p = decoded;
    while (*src) {
        const int high = *src == '%' ? UpperHexDigit(src[1]) : -1;
        const int low = high >= 0 ? UpperHexDigit(src[2]) : -1;
        *p++ = low >= 0 ? static_cast<char>(high * 16 + low) : *src;
        src += low >= 0 ? 3 : 1;
    }
    *p = 0;
    *out = decoded;
    return static_cast<unsigned>(p - decoded);
}

unsigned AccumulateAsciiForStr(const char* s) {
    unsigned sum = 0;
    for (; s && *s; ++s) sum += static_cast<unsigned char>(*s);
    return sum;
}
