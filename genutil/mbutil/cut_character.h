// Incomplete characters at the end of a piece of text.
#pragma once

#include <cstddef>

namespace genutil {

// Returns the number of bytes at the end of a text that begin a character without completing it.
// Returns 0 in a code set without characters of several bytes.
std::size_t CutCharacter(const char* text, std::size_t length, int codeSet);

}  // namespace genutil
