// The start of the character that contains a byte.
#pragma once

#include <cstddef>

#include "genutil/mbutil/step.h"

namespace genutil {

// Returns the start of the character that contains byte idx. There must be no terminator before
// idx.
std::size_t AlignToCharacter(const StepTable& table, const unsigned char* s, std::size_t idx);

// Same as above for a walk by promised lengths (PromisedLength), which differs after an invalid
// sequence.
std::size_t AlignToPromise(const StepTable& table, const unsigned char* s, std::size_t idx);

}  // namespace genutil
