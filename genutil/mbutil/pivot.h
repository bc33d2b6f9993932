// Bytes of a code set to UTF-16 units and back: the two halves of every conversion through Unicode.
// Units are two bytes each, little-endian, at any address.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genutil/mbutil/code_page.h"

namespace genutil {

// Why a half stopped: everything is done; the next character has no room, or (encoding) its escape
// or what must close the text has none; the next character is invalid, or unknown to the target.
enum class Stop : std::uint8_t { kDone, kFull, kBad };

// Where text with escape sequences stands; zero at the start of every text. Which value means what
// is iso2022.cpp's business.
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

// Writes the units of src to [out, outEnd) and advances both. Surrogate pairs are never split. At
// kFull src stands at the first byte of the next character, behind any escapes before it.
Stop Decode(const CodePage& page, Source& src, unsigned char*& out, unsigned char* outEnd);

// After kBad: how many bytes are one lost character. Those of a sequence that is well formed but
// has no character; otherwise 1 (a unit in UTF-16).
std::size_t BadLength(const CodePage& page, const Source& src);

// Writes the units in [units, unitsEnd) to dst and advances both. Text with escape sequences always
// leaves room to return to ASCII. A surrogate without its other half is bad.
Stop Encode(const CodePage& page, const unsigned char*& units, const unsigned char* unitsEnd,
            Sink& dst);

// The same for the code sets with escape sequences (iso2022.cpp).
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
