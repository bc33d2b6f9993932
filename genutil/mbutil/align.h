// The start of the character that holds a byte.
#pragma once

#include <cstddef>

#include "genutil/mbutil/step.h"

namespace genutil {

// Returns the start of the character that holds byte idx. There is no terminator before idx.
std::size_t AlignToCharacter(const StepTable& table, const unsigned char* s, std::size_t idx);

// The same for a walk by promised lengths, which differs after an invalid sequence.
std::size_t AlignToPromise(const StepTable& table, const unsigned char* s, std::size_t idx);

}  // namespace genutil
