// The length of the common prefix of two texts, many bytes at a time.
#pragma once

#include <cstddef>

#include "genutil/mbutil/step.h"

namespace genutil {

// A function that finds the start of the character that contains a byte.
using Alignment = std::size_t (*)(const StepTable& table, const unsigned char* s, std::size_t idx);

// Returns a position, at most `limit`, that begins a character in both texts. Before it, the texts
// differ at most in the case of ASCII letters that are single characters, and there is no
// terminator. The position may precede the first difference but is never after it. table is null
// for single-byte text.
std::size_t SamePrefixNoCase(const unsigned char* a, const unsigned char* b, std::size_t limit,
                             const StepTable* table, Alignment align);

}  // namespace genutil
