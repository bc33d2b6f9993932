// The structure of characters in each multi-byte code set, and stepping over them.
//
// A byte that is not a lead byte always ends a character: it is a character by itself or the last
// byte of one, because a byte in the middle of a three- or four-byte character is in the range of
// lead bytes. The start of a character can therefore be found by looking back, without scanning
// from byte 0.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "genutil/mbutil/code_set.h"

namespace genutil {

struct StepTable {
    // Bits of a first byte: the length of its character (0 at a terminator, 1 to 4), and the kind
    // of its second byte or kInvalid.
    static constexpr std::uint8_t kLength = 0x07, kSecond = 0x08, kShifted = 0x10, kInvalid = 0x80;
    static constexpr std::uint8_t kPair = 2 | kSecond;
    // Bits of a later byte: may follow a lead byte, may follow the lead byte 0x8E.
    std::array<std::uint8_t, 256> first;
    std::array<std::uint8_t, 256> later;
    bool hasShifts;  // 0x8E and 0x8F begin characters that follow special rules
    // The same ranges of lead and second bytes in a form for 16 bytes at a time, without the
    // shifts: the lowest byte of each range and its distance to the highest. Each lead byte may be
    // a second byte.
    struct Ranges {
        unsigned count;
        alignas(16) std::uint8_t low[3][16];
        alignas(16) std::uint8_t span[3][16];
    } leads, trails;
};

// Returns null for a code set whose characters are single bytes for the stepping functions.
const StepTable* StepTableOf(int codeSet);

// The table of the current code set. It is also null before initialisation, so that frequently
// called functions need only one test: they initialise if it fails.
extern const StepTable* g_currentStep;

// Returns true if a byte is the first of a character of several bytes.
inline bool BeginsLonger(const StepTable& table, unsigned byte) {
    return (table.first[byte] & ~StepTable::kInvalid) > 1;
}

// Returns StepLength() of a character that may begin with 0x8E or 0x8F.
unsigned StepLengthOfShift(const StepTable& table, const unsigned char* p);

// Returns the length of the character at p: 0 at a terminator, -1 if it is invalid. Reads at most n
// bytes, n >= 1. If n truncates the character, the result is the length that its lead byte
// promises.
inline int CharacterLength(const StepTable& table, const unsigned char* p, unsigned n) {
    const unsigned rule = table.first[*p];
    if (rule <= 1) return static_cast<int>(rule);
    if (rule & StepTable::kInvalid) return -1;
    const unsigned length = rule & StepTable::kLength;
    if (n >= 2 && !(table.later[p[1]] & rule)) return -1;
    for (unsigned i = 2; i < length && i < n; ++i)
        if (!(table.later[p[i]] & StepTable::kSecond)) return -1;
    return static_cast<int>(length);
}

// Returns the length that the byte at p promises, whatever follows it, or 1 for a byte that does
// not begin a longer character. A null table means single-byte characters.
inline unsigned PromisedLength(const StepTable* table, const unsigned char* p) {
    const unsigned rule = table ? table->first[*p] : 1;
    return rule > 1 && !(rule & StepTable::kInvalid) ? rule & StepTable::kLength : 1;
}

// Returns the number of bytes to step over the character at p: 1 for an invalid one and for a
// terminator. Each length is a constant in its own branch, which the processor predicts. A length
// read from a table would make every step wait for the preceding one.
inline unsigned StepLength(const StepTable& table, const unsigned char* p) {
    if (*p < 0x80) return 1;
    const unsigned rule = table.first[*p];
    if (__builtin_expect(rule == StepTable::kPair, 1)) {
        if (__builtin_expect(table.later[p[1]] & StepTable::kSecond, 1)) return 2;
        __asm__ volatile("");  // keeps the compiler from replacing the branch with a sum
        return 1;
    }
    return rule <= 1 || rule == StepTable::kInvalid ? 1 : StepLengthOfShift(table, p);
}

inline const unsigned char* Bytes(const char* s) {
    return reinterpret_cast<const unsigned char*>(s);
}

}  // namespace genutil
