// Bytes of a code set to UTF-16 units and back: the two halves of every conversion through Unicode.
// Units are two bytes each, little-endian, at any address.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genutil/mbutil/code_page.h"
#include "genutil/mbutil/transcode.h"

namespace genutil {

struct Source {
    const unsigned char* at;
    const unsigned char* end;
    ShiftState state{};
    bool open = false;  // more text follows the end
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
// sequence without a character, and otherwise 1 (one unit in UTF-16, and in UTF-8 the longest
// beginning of a character).
std::size_t BadLength(const CodePage& page, const Source& src);

// Returns true if the bytes from src.at to src.end may be the beginning of a longer character.
bool IsCut(const CodePage& page, const Source& src);

// Returns the unit that replaces a lost character.
unsigned short SubstituteOf(const CodePage& page);

// Encodes the units in [units, unitsEnd) to dst and advances both. In text with escape sequences,
// room to return to ASCII is always kept. An unpaired surrogate is kBad.
Stop Encode(const CodePage& page, const unsigned char*& units, const unsigned char* unitsEnd,
            Sink& dst);

// Same as above for the code sets with escape sequences (iso2022.cpp).
Stop DecodeIso2022(const CodePage& page, Source& src, unsigned char*& out, unsigned char* outEnd);
std::size_t BadLengthIso2022(const CodePage& page, const Source& src);
bool IsCutIso2022(const CodePage& page, const Source& src);
Stop EncodeIso2022(const CodePage& page, const unsigned char*& units, const unsigned char* unitsEnd,
                   Sink& dst);
// Returns false if there is no room.
bool CloseIso2022(const CodePage& page, Sink& dst);

// Bytes at src that belong together, in text of which something is invalid: a character's or an
// escape sequence's, or one that begins neither. Advances src. `unit` is what the first is carried
// as.
struct Group {
    unsigned length;
    unsigned unit;
};
Group ReadGroupIso2022(const CodePage& page, Source& src);

// Returns to ASCII at the end of a text. Returns false if there is no room, which Encode() always
// keeps.
inline bool CloseText(const CodePage& page, Sink& dst) {
    return !page.base || CloseIso2022(page, dst);
}

}  // namespace genutil
