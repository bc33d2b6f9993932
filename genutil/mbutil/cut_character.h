// Incomplete characters at the end of a piece of text.
#pragma once

#include <cstddef>

namespace genutil {

// The escape sequence and the shift in force, as text; empty for ASCII.
struct Shift {
    char escape[8] = {};
};

// Returns the number of bytes at the end of a text that begin a character (or, in JIS, an escape
// sequence) without completing it. In JIS the text begins in ASCII.
// @param shift receives the state in force at the end of a JIS text.
std::size_t CutCharacter(const char* text, std::size_t length, int codeSet, Shift* shift);

}  // namespace genutil
