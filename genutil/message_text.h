// Message texts with places for others in them.
#pragma once

#include "genstr.h"

namespace genutil {

// Loads the string resource of a number; false, with the text untouched, when there is none. Null
// while no resource library can be attached.
extern bool (*g_loadString)(CGNString& text, long id);

constexpr unsigned kMostSubstitutions = 10;

// The message with "%1" to "%10" replaced by the texts, and "%%" by "%". A null text is empty; any
// other "%" stays.
CGNString Substitute(const CGNString& message, const char* const (&texts)[kMostSubstitutions]);

}  // namespace genutil
