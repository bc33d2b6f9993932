// Bytes of a code set to UTF-16 units and back: the two halves of every conversion through Unicode.
// Units are two bytes each, little-endian, at any address.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genutil/mbutil/code_page.h"

namespace genutil {

// The reason why a half stopped.
// - kDone: everything is converted.
// - kFull: there is no room for the next character or, when encoding, for its escape sequence or
//   for the bytes that must close the text.
// - kBad: the next character is invalid or unknown to the target.
enum class Stop : std::uint8_t { kDone, kFull, kBad };

// The state of a text with escape sequences; all zero at the start of every text. The values are
// private to iso2022.cpp.
struct ShiftState {
    std::uint16_t set = 0;
    std::uint8_t designated = 0;
    std::uint8_t begun = 0;
};

struct Source {
    const unsigned char* at;
    const unsigned char* end;
    ShiftState state{};
};

struct Sink {
    unsigned char* at;
    unsigned char* end;
    ShiftState state{};
};

// Decodes src to units in [out, outEnd) and advances both. Surrogate pairs are never split. After
// kFull, src is at the first byte of the next character, after any escape sequences that precede
// it.
Stop Decode(const CodePage& page, Source& src, unsigned char*& out, unsigned char* outEnd);

// Returns the number of bytes that form one lost character after kBad: the length of a well-formed
// sequence without a character, and otherwise 1 (one unit in UTF-16).
std::size_t BadLength(const CodePage& page, const Source& src);

// Encodes the units in [units, unitsEnd) to dst and advances both. In text with escape sequences,
// room to return to ASCII is always kept. An unpaired surrogate is kBad.
Stop Encode(const CodePage& page, const unsigned char*& units, const unsigned char* unitsEnd,
            Sink& dst);

// Same as above for the code sets with escape sequences (iso2022.cpp).
Stop DecodeIso2022(const CodePage& page, Source& src, unsigned char*& out, unsigned char* outEnd);
std::size_t BadLengthIso2022(const CodePage& page, const Source& src);
Stop EncodeIso2022(const CodePage& page, const unsigned char*& units, const unsigned char* unitsEnd,
                   Sink& dst);
void CloseIso2022(const CodePage& page, Sink& dst);

// Bytes at src that belong together, in text of which something is invalid: a character's or an
// escape sequence's, or one that begins neither. Advances src. `unit` is what the first is carried
// as.
struct Group {
    unsigned length;
    unsigned unit;
};
Group ReadGroupIso2022(const CodePage& page, Source& src);

// Returns to ASCII at the end of a text.
inline void CloseText(const CodePage& page, Sink& dst) {
    if (page.base) CloseIso2022(page, dst);
}

}  // namespace genutil
