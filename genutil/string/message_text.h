// Message texts with placeholders for other texts.
#pragma once

#include "genstring.h"

namespace genutil {

constexpr unsigned kMostSubstitutions = 10;

// Returns the message with "%1" to "%10" replaced with the texts, and "%%" with "%". A null text is
// empty. Any other "%" is kept.
CGNString Substitute(const CGNString& message, const char* const (&texts)[kMostSubstitutions]);

}  // namespace genutil
