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
    // For a later byte: may follow a lead byte, may follow the lead byte 0x8E.
    std::array<std::uint8_t, 256> first;
    std::array<std::uint8_t, 256> later;
    bool hasShifts;  // 0x8E and 0x8F begin characters with rules of their own
    // The same ranges of lead and second bytes once more (without the shifts), as {lowest, highest
    // less lowest}, for many bytes at a time. Each lead byte may stand as second byte too.
    std::array<std::array<std::uint8_t, 2>, 3> leadRanges, trailRanges;
};

// Null for a code set whose characters are single bytes to the stepping functions.
const StepTable* StepTableOf(int codeSet);

// The table of the current code set, kept in step by InitMbutilExt.
extern const StepTable* g_currentStep;

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

// Bytes to step over the character at p, 1 for an invalid one and for a terminator.
inline unsigned StepLength(const StepTable& table, const unsigned char* p) {
    const unsigned rule = table.first[*p];
    if (rule <= 1 || !(table.later[p[1]] & rule)) return 1;
    const unsigned length = rule & StepTable::kLength;
    for (unsigned i = 2; i < length; ++i)
        if (!(table.later[p[i]] & StepTable::kSecond)) return 1;
    return length;
}

// Start of the character that holds byte idx; s has no terminator before idx.
std::size_t AlignToCharacter(const StepTable& table, const unsigned char* s, std::size_t idx);

inline const unsigned char* Bytes(const char* s) {
    return reinterpret_cast<const unsigned char*>(s);
}

}  // namespace genutil
