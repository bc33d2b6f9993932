// The encodings of single bytes that the detector compares, each with the letters of its bytes.
#pragma once

#include <cstdint>

#include "genutil/mbutil/detect_model.h"

namespace genutil::detect {

// Places where languages and encodings belong together. A language in an encoding of another place
// is less likely.
enum Region : std::uint8_t {
    kWest = 1,
    kCentral = 2,
    kBaltic = 4,
    kTurkey = 8,
    kVietnam = 16,
    kEsperanto = 32,
    kCeltic = 64,
    kOther = 128
};

enum class ByteKind : std::uint8_t { kOther, kLower, kUpper, kCaseless, kMark, kOpening, kSpace };

struct Encoding {
    const char* name;
    std::uint16_t characters[256];
    std::uint8_t letters[256];  // the numbers of the letters, 0 for others
    bool isLatinGuest[256];     // a Latin letter above ASCII in an encoding of another script
    ByteKind kinds[256];
    std::uint8_t costs[256];  // of a byte in the language of the script in which it is commonest
    std::int8_t marks[256];   // the index of a mark, or -1
    std::uint64_t invalid[4];
    std::int16_t codeSet;
    std::uint8_t script;
    std::uint8_t cost;  // less usual encodings have more
    std::uint8_t regions;
    bool known;  // false if its table cannot be read

    bool IsInvalid(unsigned byte) const { return invalid[byte / 64] >> byte % 64 & 1; }
};

constexpr int kStrangeCost = 17 * kCostOfBit;  // a sign that texts seldom contain
constexpr int kGuestCost = 12 * kCostOfBit;  // a letter such as an accented one beside Arabic ones

constexpr unsigned kEncodings = 31;
constexpr unsigned kRowLength = 48;  // kLatinLanguages, rounded up for vector instructions

// Everything that is prepared at the first use. Kept for the life of the process.
struct Prepared {
    Encoding encodings[kEncodings];
    // The costs of pairs of ASCII letters in all Latin languages, at (first * 27 + second). 0 is
    // anything but a letter.
    std::uint8_t asciiPairs[27 * 27][kRowLength];
    std::uint8_t asciiLetters[256];  // 1 to 26
    std::uint8_t regions[kLanguages];
};

// Returns null if allocation fails. The first call, on any thread, prepares.
const Prepared* Prepare();

}  // namespace genutil::detect
