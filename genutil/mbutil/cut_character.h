// What a piece of text that was cut at a number of bytes ends in.
#pragma once

#include <cstddef>

namespace genutil {

// The escape sequence and the shift in force, as text; empty for ASCII.
struct Shift {
    char escape[8] = {};
};

// Bytes at the end of a text that begin a character (or, in JIS, an escape sequence) without ending
// it. For JIS the text begins in ASCII, and *shift receives what is in force at its end.
std::size_t CutCharacter(const char* text, std::size_t length, int codeSet, Shift* shift);

}  // namespace genutil
