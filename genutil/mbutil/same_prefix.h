// How far two texts are alike, many bytes at a time.
#pragma once

#include <cstddef>

#include "genutil/mbutil/step.h"

namespace genutil {

// Bytes, at most `limit`, in which a and b are the same but for the case of ASCII letters that are
// characters of their own; ends before a terminator of either. table is null for single-byte text.
// The result may stop short of the first difference, never behind it.
std::size_t SamePrefixNoCase(const unsigned char* a, const unsigned char* b, std::size_t limit,
                             const StepTable* table);

}  // namespace genutil
