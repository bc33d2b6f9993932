// How far two texts are alike, many bytes at a time.
#pragma once

#include <cstddef>

#include "genutil/mbutil/step.h"

namespace genutil {

// How a walk finds the start of the character that holds a byte.
using Alignment = std::size_t (*)(const StepTable& table, const unsigned char* s, std::size_t idx);

// The start of a character of both texts, at most at `limit`, before which they are the same but
// for the case of ASCII letters that are characters of their own; no terminator lies before it.
// table is null for single-byte text. May stop short of the first difference, never behind it.
std::size_t SamePrefixNoCase(const unsigned char* a, const unsigned char* b, std::size_t limit,
                             const StepTable* table, Alignment align);

}  // namespace genutil
