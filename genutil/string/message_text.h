// Message texts with places for others in them.
#pragma once

#include "genstring.h"

namespace genutil {

constexpr unsigned kMostSubstitutions = 10;

// The message with "%1" to "%10" replaced by the texts, and "%%" by "%". A null text is empty; any
// other "%" stays.
CGNString Substitute(const CGNString& message, const char* const (&texts)[kMostSubstitutions]);

}  // namespace genutil
