// How bytes make characters in each multi-byte code set, and how to step over them.
//
// A byte that is no lead byte always ends a character: it is one by itself, or the last of one (a
// byte in the middle of a three- or four-byte character is in the range of lead bytes). That is
// what makes it possible to find a character's start by looking back, not from byte 0.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "genutil/mbutil/code_set.h"

namespace genutil {

struct StepTable {
    // For a first byte: the length of its character (0 at a terminator, 1 to 4) and the kind of its
    // second byte, or kInvalid.
    static constexpr std::uint8_t kLength = 0x07, kSecond = 0x08, kShifted = 0x10, kInvalid = 0x80;
    static constexpr std::uint8_t kPair = 2 | kSecond;
    // For a later byte: may follow a lead byte, may follow the lead byte 0x8E.
    std::array<std::uint8_t, 256> first;
    std::array<std::uint8_t, 256> later;
    bool hasShifts;  // 0x8E and 0x8F begin characters with rules of their own
    // The same ranges of lead and second bytes once more (without the shifts), for 16 bytes at a
    // time: the lowest byte of each and its distance to the highest. Each lead byte may be a second
    // byte.
    struct Ranges {
        unsigned count;
        alignas(16) std::uint8_t low[3][16];
        alignas(16) std::uint8_t span[3][16];
    } leads, trails;
};

// Null for a code set whose characters are single bytes to the stepping functions.
const StepTable* StepTableOf(int codeSet);

// The table of the current code set. Null before initialisation too, so that one test serves the
// functions on the hot path: only when it fails do they ask whether to initialise.
extern const StepTable* g_currentStep;

// Whether a byte is the first of a character of several bytes.
inline bool BeginsLonger(const StepTable& table, unsigned byte) {
    return (table.first[byte] & ~StepTable::kInvalid) > 1;
}

// StepLength of a character that 0x8E or 0x8F may begin.
unsigned StepLengthOfShift(const StepTable& table, const unsigned char* p);

// Length of the character at p: 0 at a terminator, -1 when invalid. Looks at no more than n bytes;
// a length that n cuts is promised by the lead byte. n is at least 1.
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

// The length that the byte at p promises, whatever follows it; 1 for a byte that begins nothing
// longer. A null table stands for characters of single bytes.
inline unsigned PromisedLength(const StepTable* table, const unsigned char* p) {
    const unsigned rule = table ? table->first[*p] : 1;
    return rule > 1 && !(rule & StepTable::kInvalid) ? rule & StepTable::kLength : 1;
}

// Bytes to step over the character at p, 1 for an invalid one and for a terminator. Each length is
// the constant of a branch: the processor predicts it and goes on, where a length out of a table
// would make every step wait for the one before.
inline unsigned StepLength(const StepTable& table, const unsigned char* p) {
    if (*p < 0x80) return 1;
    const unsigned rule = table.first[*p];
    if (__builtin_expect(rule == StepTable::kPair, 1)) {
        if (__builtin_expect(table.later[p[1]] & StepTable::kSecond, 1)) return 2;
        __asm__ volatile("");  // keeps the compiler from making a sum of it
        return 1;
    }
    return rule <= 1 || rule == StepTable::kInvalid ? 1 : StepLengthOfShift(table, p);
}

inline const unsigned char* Bytes(const char* s) {
    return reinterpret_cast<const unsigned char*>(s);
}

}  // namespace genutil
